#include "script/stackRoom.h"

#include <pthread.h>

#include <cstdint>

namespace huge {

namespace {

/// The lowest address of the thread's stack, 0 when it is not known.
uintptr_t stackBottom() noexcept
{
    pthread_attr_t attributes;
    if (pthread_getattr_np(pthread_self(), &attributes) != 0)
        return 0;
    void* bottom = nullptr;
    size_t size = 0;
    if (pthread_attr_getstack(&attributes, &bottom, &size) != 0)
        bottom = nullptr;
    pthread_attr_destroy(&attributes);
    return reinterpret_cast<uintptr_t>(bottom);
}

} // namespace

size_t stackRoom() noexcept
{
    thread_local const uintptr_t bottom = stackBottom();
    // The frame's own address: a local variable may stand on a sanitizer's fake stack.
    const uintptr_t here = reinterpret_cast<uintptr_t>(__builtin_frame_address(0));
    if (bottom == 0 || here < bottom)
        return SIZE_MAX;
    return here - bottom;
}

} // namespace huge
