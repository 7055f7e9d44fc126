#pragma once

#include <cstdint>
#include <functional>

#include "generator/ElementSource.h"
#include "generator/Sizes.h"

namespace bench {

/// The seed of everything that is generated where nothing else is asked for.
constexpr std::uint32_t kDefaultSeed = 2024;

/// Takes the elements of a metamodel one after the other: classes, then links, then behaviors.
using ElementSink = std::function<void(EKind, const SElement&)>;

/// The metamodel as shipped.
void GenerateOriginal(const SSize& size, std::uint32_t seed, const ElementSink& sink);

/// The metamodel of an installation of the same seed.
void GenerateClient(const SSize& size, const SVariant& variant, std::uint32_t seed, const ElementSink& sink);

}  // namespace bench
