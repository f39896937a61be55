#include "Backends/CURL/CURLTransferService.h"

#include <algorithm>
#include <chrono>
#include <new>
#include <optional>

namespace platform {
namespace {

/// How long the thread sleeps while no transfer is running; an order wakes it up.
constexpr Instant kIdleWait = std::chrono::hours(1);
/// How long the thread sleeps while transfers are running. libcurl sometimes does not enforce the
/// timeout of a connection that a redirect opens until it is called for another reason.
constexpr Instant kBusyWait = std::chrono::milliseconds(250);

/// The handle that the caller of `start` owns; destroying it cancels the transfer.
class Handle final : public Transfer {
public:
    Handle(CURLTransferService& service, std::shared_ptr<EasyTransfer> transfer)
        : service_(service), transfer_(std::move(transfer)) {}
    ~Handle() override { service_.stop(std::move(transfer_)); }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;

private:
    CURLTransferService& service_;
    std::shared_ptr<EasyTransfer> transfer_;
};

/// Initialises libcurl before any thread uses it. It is never cleaned up explicitly: the libraries
/// that libcurl loads clean up themselves at exit.
CURLM* makeMulti() {
    static const CURLcode once = curl_global_init(CURL_GLOBAL_DEFAULT);
    CURLM* const multi = once == CURLE_OK ? curl_multi_init() : nullptr;
    if (multi == nullptr)
        throw std::bad_alloc();
    return multi;
}

} // namespace

std::unique_ptr<TransferService> makeTransferService() {
    return std::make_unique<CURLTransferService>();
}

CURLTransferService::CURLTransferService() : multi_(makeMulti()) {}

CURLTransferService::~CURLTransferService() {
    {
        const std::scoped_lock lock(mutex_);
        ends_ = true;
    }
    curl_multi_wakeup(multi_);
    if (thread_.joinable())
        thread_.join();
    for (const auto& transfer : running_)
        curl_multi_remove_handle(multi_, transfer->easy());
    running_.clear();
    curl_multi_cleanup(multi_);
}

std::unique_ptr<Transfer> CURLTransferService::start(TransferRequest request) {
    auto transfer = std::make_shared<EasyTransfer>(std::move(request));
    give(Wish::Start, transfer);
    return std::make_unique<Handle>(*this, std::move(transfer));
}

void CURLTransferService::stop(std::shared_ptr<EasyTransfer> transfer) {
    give(Wish::Stop, std::move(transfer));
}

void CURLTransferService::give(Wish wish, std::shared_ptr<EasyTransfer> transfer) {
    {
        const std::scoped_lock lock(mutex_);
        orders_.emplace_back(wish, std::move(transfer));
    }
    if (!thread_.joinable())
        thread_ = std::thread([this] { run(); });
    curl_multi_wakeup(multi_);
}

void CURLTransferService::run() {
    while (takeOrders()) {
        int stillRunning = 0;
        curl_multi_perform(multi_, &stillRunning);
        endFinished();
        endStalled();
        waitForSomething();
    }
}

bool CURLTransferService::takeOrders() {
    std::vector<Order> orders;
    {
        const std::scoped_lock lock(mutex_);
        if (ends_)
            return false;
        orders.swap(orders_);
    }
    for (const auto& [wish, transfer] : orders) {
        if (wish == Wish::Start)
            begin(transfer);
        else
            remove(transfer.get());
    }
    return true;
}

void CURLTransferService::begin(const std::shared_ptr<EasyTransfer>& transfer) {
    if (!transfer->prepare())
        return transfer->end(CURLE_FAILED_INIT);
    running_.push_back(transfer);
    if (curl_multi_add_handle(multi_, transfer->easy()) != CURLM_OK)
        end(transfer.get(), CURLE_OUT_OF_MEMORY);
}

void CURLTransferService::endFinished() {
    int left = 0;
    while (const CURLMsg* message = curl_multi_info_read(multi_, &left)) {
        if (message->msg == CURLMSG_DONE)
            end(EasyTransfer::of(message->easy_handle), message->data.result);
    }
}

void CURLTransferService::endStalled() {
    const auto running = running_;
    for (const auto& transfer : running) {
        if (transfer->timeLeft() > Instant::zero())
            continue;
        transfer->giveUp();
        end(transfer.get(), CURLE_OPERATION_TIMEDOUT);
    }
}

void CURLTransferService::end(EasyTransfer* transfer, CURLcode code) {
    const auto kept = *std::find_if(running_.begin(), running_.end(),
                                    [&](const auto& one) { return one.get() == transfer; });
    transfer->end(code);
    remove(transfer);
}

void CURLTransferService::remove(EasyTransfer* transfer) {
    const auto found = std::find_if(running_.begin(), running_.end(),
                                    [&](const auto& one) { return one.get() == transfer; });
    if (found == running_.end())
        return;
    curl_multi_remove_handle(multi_, transfer->easy());
    running_.erase(found);
}

void CURLTransferService::waitForSomething() {
    Instant longest = running_.empty() ? kIdleWait : kBusyWait;
    for (const auto& transfer : running_)
        longest = std::min(longest, transfer->timeLeft());
    const auto wait = std::chrono::ceil<std::chrono::milliseconds>(longest);
    curl_multi_poll(multi_, nullptr, 0, static_cast<int>(wait.count()), nullptr);
}

} // namespace platform
