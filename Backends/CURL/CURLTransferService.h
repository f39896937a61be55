#pragma once

#include "Backends/CURL/EasyTransfer.h"
#include "Platform/Foundation/Transfer.h"

#include <memory>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

namespace platform {

/// Runs all transfers of a session on one worker thread, which the first transfer starts.
///
/// Thread: main, except the functions that are marked below, which are worker.
class CURLTransferService final : public TransferService {
public:
    CURLTransferService();
    /// Joins the worker thread, which never blocks on the network.
    ~CURLTransferService() override;
    CURLTransferService(const CURLTransferService&) = delete;
    CURLTransferService& operator=(const CURLTransferService&) = delete;

    [[nodiscard]] std::unique_ptr<Transfer> start(TransferRequest request) override;
    void stop(std::shared_ptr<EasyTransfer> transfer);

private:
    enum class Wish { Start, Stop };
    using Order = std::pair<Wish, std::shared_ptr<EasyTransfer>>;

    void give(Wish wish, std::shared_ptr<EasyTransfer> transfer);

    // Worker thread only.
    void run();
    [[nodiscard]] bool takeOrders();
    void begin(const std::shared_ptr<EasyTransfer>& transfer);
    void endFinished();
    void endStalled();
    void end(EasyTransfer* transfer, CURLcode code);
    void remove(EasyTransfer* transfer);
    void waitForSomething();

    CURLM* const multi_;
    std::mutex mutex_; // guards the next two members
    std::vector<Order> orders_;
    bool ends_ = false;
    std::thread thread_;
    std::vector<std::shared_ptr<EasyTransfer>> running_; // worker thread only
};

} // namespace platform
