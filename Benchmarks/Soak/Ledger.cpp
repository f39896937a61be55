#include "Benchmarks/Soak/Ledger.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <sstream>

using nlohmann::ordered_json;

namespace {

/// The one-sided 99 % quantile of the normal distribution.
constexpr double kCertain = 2.326;

/// The slopes between all pairs of samples, sorted.
std::vector<double> slopesBetween(const std::vector<Ledger::Sample>& samples) {
    std::vector<double> slopes;
    for (std::size_t i = 0; i < samples.size(); ++i) {
        for (std::size_t j = i + 1; j < samples.size(); ++j) {
            const double minutes = samples[j].minute - samples[i].minute;
            if (minutes > 0)
                slopes.push_back((samples[j].amount - samples[i].amount) / minutes);
        }
    }
    std::sort(slopes.begin(), slopes.end());
    return slopes;
}

template <class... Parts>
std::string sentence(const Parts&... parts) {
    std::ostringstream text;
    (text << ... << parts);
    return text.str();
}

} // namespace

void Ledger::count(const std::string& name, int count) {
    Count& entry = counts_.try_emplace(name, Count{count, count, count, 0}).first->second;
    entry.most = std::max(entry.most, count);
    entry.last = count;
    ++entry.looks;
}

std::optional<int> Ledger::mostOf(const std::string& name) const {
    const auto entry = counts_.find(name);
    return entry == counts_.end() ? std::nullopt : std::optional(entry->second.first);
}

void Ledger::measure(const std::string& name, double minute, double amount) {
    amounts_.at(name).samples.push_back({minute, amount});
}

// The Theil–Sen estimator. The number of pairs of n samples that ascend by chance alone is
// approximately normally distributed with the variance below; the bound is the slope at that
// distance below the median.
std::optional<Ledger::Slope> Ledger::slopeOf(const std::vector<Sample>& samples) {
    const std::vector<double> slopes = slopesBetween(samples);
    if (samples.size() < kFewest || slopes.empty())
        return std::nullopt;
    const auto n = static_cast<double>(samples.size());
    const double spread = kCertain * std::sqrt(n * (n - 1) * (2 * n + 5) / 18);
    const double rank = (static_cast<double>(slopes.size()) - spread) / 2;
    return Slope{slopes[slopes.size() / 2], slopes[static_cast<std::size_t>(std::max(rank, 0.0))]};
}

std::vector<std::string> Ledger::growths() const {
    std::vector<std::string> lines;
    for (const auto& [name, count] : counts_) {
        if (count.most > count.first)
            lines.push_back(sentence(name, ": ", count.first, " at first, up to ", count.most,
                                     " since, ", count.last, " at the end"));
    }
    for (const auto& [name, amount] : amounts_) {
        const auto slope = slopeOf(amount.samples);
        if (slope && slope->atLeast > amount.bound)
            lines.push_back(sentence(name, ": grows by ", slope->median, " a minute, by ",
                                     slope->atLeast, " at least; ", amount.bound, " is allowed"));
    }
    return lines;
}

ordered_json Ledger::inJson() const {
    ordered_json report;
    for (const auto& [name, amount] : amounts_) {
        const auto slope = slopeOf(amount.samples);
        ordered_json& entry = report["measured"][name] = {{"samples", amount.samples.size()},
                                                          {"slope_a_minute", nullptr},
                                                          {"slope_at_least", nullptr},
                                                          {"bound", amount.bound}};
        if (slope) {
            entry["slope_a_minute"] = slope->median;
            entry["slope_at_least"] = slope->atLeast;
        }
        if (!amount.samples.empty()) {
            entry["first"] = amount.samples.front().amount;
            entry["last"] = amount.samples.back().amount;
        }
    }
    for (const auto& [name, count] : counts_)
        report["counted"][name] = {{"looks", count.looks},
                                   {"first", count.first},
                                   {"most", count.most},
                                   {"last", count.last}};
    return report;
}
