#pragma once

#include "HVViewer/DisplayController/ZNTDisplayViewController.h"

#include <stdexcept>

/// A player that records the state of its video.
class Spectator final : public ZNTDisplayViewController {
public:
    void videoIsLoading() override { isLoading = true; }
    void videoDidEndLoading() override { isLoading = false; }
    void videoDidEndPlaying() override { ++ends; }
    void downloadVideoFailedWithError(const platform::Error& error) override {
        throw std::runtime_error(error.detail);
    }

    bool isLoading = false;
    int ends = 0;
};
