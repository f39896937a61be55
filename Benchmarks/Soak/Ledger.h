#pragma once

#include <nlohmann/json.hpp>

#include <map>
#include <optional>
#include <string>
#include <vector>

/// Samples of what the process holds, always taken in the same state, and whether any of it grows.
///
/// What can be counted has to be the same again, to the last one, at every look. What is measured
/// wobbles: it grows when its slope is over a bound that the scatter of the samples does not
/// explain.
///
/// Thread: one.
class Ledger {
public:
    /// Of so much a minute at most it is not said that it grows.
    void setBound(const std::string& name, double perMinute) { amounts_[name].bound = perMinute; }

    /// The first count of a name is what later ones must not be over.
    void count(const std::string& name, int count);
    /// How many there may be; none before the first count.
    [[nodiscard]] std::optional<int> mostOf(const std::string& name) const;
    /// Of a name that has a bound.
    void measure(const std::string& name, double minute, double amount);

    /// A line for each thing that has grown; none: all is flat.
    [[nodiscard]] std::vector<std::string> growths() const;
    [[nodiscard]] nlohmann::ordered_json inJson() const;

    struct Sample {
        double minute;
        double amount;
    };
    /// Per minute: the median of the slopes between all pairs of samples, which a single step or
    /// outlier does not move, and the least that it is with a certainty of 99 in 100.
    struct Slope {
        double median;
        double atLeast;
    };
    /// None for fewer than `kFewest` samples.
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
