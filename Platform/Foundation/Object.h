#pragma once

#include "Platform/Foundation/Export.h"

#include <concepts>
#include <memory>
#include <string>
#include <utility>

namespace platform {

/// Base of the classes that are shared, observed or handed out by reference.
///
/// Objects are made with `make<T>(…)`, which runs `init()` once the object can hand out itself;
/// a host's subclasses are made the same way.
class ZANTO_EXPORT Object : public std::enable_shared_from_this<Object> {
public:
    Object() = default;
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;
    virtual ~Object() = default;

    /// The second half of construction, run by `make`. An override calls its base class first.
    virtual void init() {}

    /// The class of the real receiver, without namespaces, for messages.
    [[nodiscard]] std::string className() const;

protected:
    /// Itself as its own class; only once `init()` has begun.
    template <class T>
    [[nodiscard]] std::shared_ptr<T> shared(T* self) {
        return std::shared_ptr<T>(shared_from_this(), self);
    }
    template <class T>
    [[nodiscard]] std::weak_ptr<T> weak(T* self) {
        return shared(self);
    }
};

/// Makes a shared object and completes it.
template <std::derived_from<Object> T, class... Arguments>
[[nodiscard]] std::shared_ptr<T> make(Arguments&&... arguments) {
    auto object = std::make_shared<T>(std::forward<Arguments>(arguments)...);
    object->init();
    return object;
}

} // namespace platform
