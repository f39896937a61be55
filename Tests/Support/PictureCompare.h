#pragma once

#include "Platform/Imaging/Image.h"

#include <gtest/gtest.h>

#include <string>

/// How far two pictures may be apart.
struct PictureTolerance {
    /// A pixel fails when a channel differs by more.
    int channel = 4;
    /// The picture fails when more of the compared pixels do, or all of a 4 × 4 block.
    double fraction = 0.001;
};

/// Whether `actual` is `expected` within the tolerance. Pixels that are fully transparent in
/// `expected` are not compared; alpha itself never is.
///
/// On failure `actual.png`, `expected.png` and `diff.png` are written to the build folder under
/// `render/<name>`, and the message names the first bad pixel, both values, the count and the
/// limit.
[[nodiscard]] ::testing::AssertionResult picturesMatch(const std::string& name,
                                                       const platform::Image& actual,
                                                       const platform::Image& expected,
                                                       PictureTolerance tolerance = {});

/// Whether both are the same to the last bit, alpha included; failure pictures as above.
[[nodiscard]] ::testing::AssertionResult picturesAreEqual(const std::string& name,
                                                          const platform::Image& actual,
                                                          const platform::Image& expected);
