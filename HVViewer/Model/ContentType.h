#pragma once

#include <cstdint>

/// The kind of content that is shown. The numeric values are part of the public interface.
enum class ContentType : std::int64_t {
    Undefined = 0,
    Photo = 1,
    Video = 2,
};
