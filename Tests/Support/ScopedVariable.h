#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace tests {

/// Sets or unsets an environment variable, and restores it at the end of the scope.
class ScopedVariable {
public:
    ScopedVariable(const char* name, const std::optional<std::string>& value) : name_(name) {
        if (const char* earlier = std::getenv(name))
            earlier_ = earlier;
        put(value);
    }
    ~ScopedVariable() { put(earlier_); }
    ScopedVariable(const ScopedVariable&) = delete;
    ScopedVariable& operator=(const ScopedVariable&) = delete;

private:
    void put(const std::optional<std::string>& value) const {
        if (value)
            ::setenv(name_, value->c_str(), 1);
        else
            ::unsetenv(name_);
    }

    const char* name_;
    std::optional<std::string> earlier_;
};

} // namespace tests
