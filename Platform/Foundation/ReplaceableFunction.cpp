#include "Platform/Foundation/ReplaceableFunction.h"

namespace platform {

const void* currentThreadMark() {
    static thread_local const char mark = 0;
    return &mark;
}

} // namespace platform
