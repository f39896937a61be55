#pragma once

#include <cstdint>

/// What kind of content is shown. The numbers are part of the interface.
enum class ContentType : std::int64_t {
    Undefined = 0,
    Photo = 1,
    Video = 2,
};
