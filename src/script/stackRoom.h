#pragma once

#include <cstddef>

namespace huge {

/// Bytes of machine stack that the running thread has left, whatever its size and whatever the
/// compiler puts into a frame. SIZE_MAX where the system does not tell. Cheap after the first call
/// of a thread.
size_t stackRoom() noexcept;

} // namespace huge
