#pragma once

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

#include "kvxsptjson/JsonAllocator.h"

/// RapidJSON's writers of text, on the allocator that throws.
namespace kvx {

using JsonTextBuffer = rapidjson::GenericStringBuffer<rapidjson::UTF8<>, CJsonAllocator>;

template <typename Stream>
using JsonWriter = rapidjson::Writer<Stream, rapidjson::UTF8<>, rapidjson::UTF8<>, CJsonAllocator>;
template <typename Stream>
using PrettyJsonWriter = rapidjson::PrettyWriter<Stream, rapidjson::UTF8<>, rapidjson::UTF8<>, CJsonAllocator>;

}  // namespace kvx
