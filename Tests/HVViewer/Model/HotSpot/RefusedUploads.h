#pragma once

/// While it lives, GL refuses the pixels of every texture with GL_INVALID_VALUE (1281).
class RefusedUploads {
public:
    RefusedUploads();
    ~RefusedUploads();
    RefusedUploads(const RefusedUploads&) = delete;
    RefusedUploads& operator=(const RefusedUploads&) = delete;
};
