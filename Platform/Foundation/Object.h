#pragma once

#include "Platform/Foundation/Export.h"

#include <concepts>
#include <memory>
#include <string>
#include <utility>

namespace platform {

class Environment;

/// Base of the classes that are shared, observed or returned by reference.
///
/// Objects are created with `make<T>(…)`, which calls `init()` once `shared(this)` can be used; a
/// host's subclasses are created in the same manner. An object belongs to the environment that is
/// current at its creation. It keeps that environment alive, and is destroyed inside of it.
class ZANTO_EXPORT Object : public std::enable_shared_from_this<Object> {
public:
    Object();
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;
    virtual ~Object();

    /// The second phase of construction, called by `make`. An override calls its base class first.
    virtual void init() {}

    /// The name of the dynamic class, without namespaces, for messages.
    [[nodiscard]] std::string className() const;

    /// The environment in which the object was created.
    ///
    /// Thread: any; thread-safe.
    [[nodiscard]] const std::shared_ptr<Environment>& environment() const { return environment_; }

    /// Destroys an object that `make` has created.
    ///
    /// Thread: main.
    struct ZANTO_EXPORT Deleter {
        void operator()(Object* object) const;
    };

protected:
    /// Returns a pointer to this object as its own class. Precondition: `init()` has begun.
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

/// Creates a shared object and calls its `init()`.
template <std::derived_from<Object> T, class... Arguments>
[[nodiscard]] std::shared_ptr<T> make(Arguments&&... arguments) {
    std::shared_ptr<T> object(new T(std::forward<Arguments>(arguments)...), Object::Deleter());
    object->init();
    return object;
}

} // namespace platform
