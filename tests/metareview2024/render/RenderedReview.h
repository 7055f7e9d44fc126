#pragma once

#include <string>

#include "metareview2024/render/Render.h"

namespace test {

/// The whole output in a format.
std::string Rendered(const std::string& format, const metareview::SReview& review,
                     const metareview::SRenderOptions& options = {});

/// A review with every member that a saved review can have.
metareview::SReview FullReview();

}  // namespace test
