#pragma once

#include <nlohmann/json.hpp>

#include <map>
#include <optional>
#include <string>
#include <vector>

/// Records the resources of the process, always in the same state, and detects growth.
///
/// Counts must not exceed their first value. Measurements fluctuate: one has grown if its slope
/// exceeds a bound and the scatter of the samples does not explain it.
///
/// Thread: any; not thread-safe, one thread at a time.
class Ledger {
public:
    /// Growth of at most this much per minute is not reported.
    void setBound(const std::string& name, double perMinute) { amounts_[name].bound = perMinute; }

    /// The first count of a name is the limit for later counts.
    void count(const std::string& name, int count);
    /// The limit of a count; nullopt before the first count.
    [[nodiscard]] std::optional<int> mostOf(const std::string& name) const;
    /// Adds a measurement; the name must have a bound.
    void measure(const std::string& name, double minute, double amount);

    /// One line for each resource that has grown; empty if none has.
    [[nodiscard]] std::vector<std::string> growths() const;
    [[nodiscard]] nlohmann::ordered_json inJson() const;

    struct Sample {
        double minute;
        double amount;
    };
    /// Per minute: the median of the slopes between all pairs of samples, which is robust against
    /// single steps and outliers, and its lower 99 % confidence bound.
    struct Slope {
        double median;
        double atLeast;
    };
    /// nullopt for fewer than `kFewest` samples.
    [[nodiscard]] static std::optional<Slope> slopeOf(const std::vector<Sample>& samples);
    static constexpr std::size_t kFewest = 8;

private:
    struct Count {
        int first;
        int most;
        int last;
        int looks;
    };
    struct Amount {
        double bound = 0;
        std::vector<Sample> samples = {};
    };
    std::map<std::string, Count> counts_;
    std::map<std::string, Amount> amounts_;
};
