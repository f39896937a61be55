#pragma once

#include "Platform/Foundation/Export.h"

#include <concepts>
#include <memory>
#include <string>
#include <utility>

namespace platform {

class Environment;

/// Base of the classes that are shared, observed or handed out by reference.
///
/// Objects are made with `make<T>(…)`, which runs `init()` once the object can hand out itself;
/// a host's subclasses are made the same way. An object belongs to the environment that is current
/// when it is made, which it keeps alive, and is destroyed inside it.
class ZANTO_EXPORT Object : public std::enable_shared_from_this<Object> {
public:
    Object();
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;
    virtual ~Object();

    /// The second half of construction, run by `make`. An override calls its base class first.
    virtual void init() {}

    /// The class of the real receiver, without namespaces, for messages.
    [[nodiscard]] std::string className() const;

    /// What it was made in. Thread: any; thread-safe.
    [[nodiscard]] const std::shared_ptr<Environment>& environment() const { return environment_; }

    /// Destroys an object that `make` has made. Thread: main.
    struct ZANTO_EXPORT Deleter {
        void operator()(Object* object) const;
    };

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

private:
    std::shared_ptr<Environment> environment_;
};

/// Makes a shared object and completes it.
template <std::derived_from<Object> T, class... Arguments>
[[nodiscard]] std::shared_ptr<T> make(Arguments&&... arguments) {
    std::shared_ptr<T> object(new T(std::forward<Arguments>(arguments)...), Object::Deleter());
    object->init();
    return object;
}

} // namespace platform
