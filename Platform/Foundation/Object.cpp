#include "Platform/Foundation/Object.h"

#include "Platform/Foundation/Environment.h"

#include <cxxabi.h>

#include <cstddef>
#include <cstdlib>
#include <typeinfo>

namespace platform {
namespace {

/// The text after the last "::" that is not inside an argument list.
std::string withoutScopes(const std::string& name) {
    int depth = 0;
    for (std::size_t i = name.size(); i-- > 0;) {
        const char c = name[i];
        if (c == '>' || c == ')')
            ++depth;
        if (c == '<' || c == '(')
            --depth;
        if (c == ':' && depth == 0)
            return name.substr(i + 1);
    }
    return name;
}

} // namespace

Object::Object() : environment_(Environment::current().shared_from_this()) {}

Object::~Object() = default;

void Object::Deleter::operator()(Object* object) const {
    const auto environment = object->environment();
    const Environment::Scope scope(*environment);
    delete object;
}

std::string Object::className() const {
    int status = 0;
    char* demangled = abi::__cxa_demangle(typeid(*this).name(), nullptr, nullptr, &status);
    const std::string name = status == 0 ? demangled : typeid(*this).name();
    std::free(demangled);
    return withoutScopes(name);
}

} // namespace platform
