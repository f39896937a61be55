#include "Platform/Foundation/Object.h"

#include <cxxabi.h>

#include <cstdlib>
#include <typeinfo>

namespace platform {

std::string Object::className() const {
    int status = 0;
    char* demangled = abi::__cxa_demangle(typeid(*this).name(), nullptr, nullptr, &status);
    std::string name = status == 0 ? demangled : typeid(*this).name();
    std::free(demangled);
    // Template arguments may hold "::" of their own.
    const auto end = name.find('<');
    const auto separator = name.rfind("::", end);
    return separator == std::string::npos ? name : name.substr(separator + 2);
}

} // namespace platform
