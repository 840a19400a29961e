#include "script/XScriptRunStack.h"

#include "common/XException.h"
#include "values/HugeVarRef.h"

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <memory>
#include <new>
#include <stdexcept>
#include <utility>
#include <vector>

namespace huge {

HugeVariant* XScriptRunStack::s_next = nullptr;
HugeVariant* XScriptRunStack::s_chunk = nullptr;
HugeVariant* XScriptRunStack::s_chunkEnd = nullptr;
HugeVariant* XScriptRunStack::s_bottom = nullptr;
size_t XScriptRunStack::s_upward = 0;

namespace {

struct FreeSlots {
    void operator()(HugeVariant* slots) const noexcept { std::free(slots); }
};

/// A stretch of slots, null where no frame uses them. Frames never cross from one into the next, so
/// that a frame's slots are one array.
struct Chunk {
    std::unique_ptr<HugeVariant, FreeSlots> slots;
    size_t count = 0;
    HugeVariant* resumeAt = nullptr; ///< where the frames of the chunk below end

    HugeVariant* begin() const noexcept { return slots.get(); }
    HugeVariant* end() const noexcept { return slots.get() + count; }
};

/// Room for the frames of most runs, and for the largest frame that there can be.
constexpr size_t chunkSlots = 2 * XScriptRunStack::maxSlots;
/// Beyond this the frames of a recursion are refused, however few they are.
constexpr size_t maxArenaSlots = size_t(1) << 26;

struct Arena {
    std::vector<Chunk> chunks; ///< those in use; above the first, each holds at least a frame
    Chunk spare;               ///< so that going up and down at the edge of a chunk costs nothing
    std::vector<HugeVariant*> upward; ///< slots with references on slots above them

    size_t slots() const noexcept
    {
        size_t sum = 0;
        for (const Chunk& chunk : chunks)
            sum += chunk.count;
        return sum;
    }

    /// Where a handle stands among all slots, from the bottom; 0 for a handle outside.
    size_t heightOf(const HugeVariant* handle) const noexcept
    {
        const std::less<const HugeVariant*> before;
        size_t below = 1;
        for (const Chunk& chunk : chunks) {
            if (!before(handle, chunk.begin()) && before(handle, chunk.end()))
                return below + size_t(handle - chunk.begin());
            below += chunk.count;
        }
        return 0;
    }
};

Arena& arena()
{
    static Arena instance;
    return instance;
}

/// Pages of zeros that the system hands out as they are touched: a null handle is a zero.
Chunk makeChunk(size_t count)
{
    Chunk chunk;
    chunk.slots.reset(static_cast<HugeVariant*>(std::calloc(count, sizeof(HugeVariant))));
    if (!chunk.slots)
        throw std::bad_alloc();
    chunk.count = count;
    return chunk;
}

/// Makes a reference a copy of the value that it stands for; null if there is no memory for one.
void settle(HugeVariant& handle) noexcept
{
    HugeVariant copy;
    try {
        copy = HugeVariant(static_cast<const HugeVariant&>(handle.final()));
    } catch (const std::exception&) {
    }
    handle.replace_(std::move(copy));
}

const HugeVariant* targetOf(const HugeVariant& handle) noexcept
{
    if (!handle.holds(HugeVarClass::Ref))
        return nullptr;
    return static_cast<const HugeVarRef*>(handle.object())->target();
}

/// Addresses of one chunk: from and to belong to the same frame.
bool inside(const HugeVariant* slot, const HugeVariant* from, const HugeVariant* to) noexcept
{
    const std::less<const HugeVariant*> before;
    return slot != nullptr && !before(slot, from) && before(slot, to);
}

} // namespace

void XScriptRunStack::openChunk(size_t reserved)
{
    Arena& all = arena();
    const size_t count = std::max(chunkSlots, reserved + 1);
    if (all.slots() + count > maxArenaSlots)
        throw std::runtime_error(tooDeep);
    Chunk chunk = all.spare.count >= count ? std::exchange(all.spare, Chunk()) : makeChunk(count);
    chunk.resumeAt = s_next;
    all.chunks.push_back(std::move(chunk));
    s_next = s_chunk = all.chunks.back().begin();
    s_chunkEnd = all.chunks.back().end();
    if (all.chunks.size() == 1)
        s_bottom = s_next;
}

void XScriptRunStack::closeChunk() noexcept
{
    Arena& all = arena();
    if (all.chunks.size() == 1) {
        all.spare = Chunk();
        return;
    }
    all.spare = std::move(all.chunks.back());
    all.chunks.pop_back();
    s_next = all.spare.resumeAt;
    s_chunk = all.chunks.back().begin();
    s_chunkEnd = all.chunks.back().end();
}

HugeVariant& XScriptRunStack::push_ref_(const HugeVariant& value)
{
    if (!value.isRef()) {
        throw xstd::XExceptionItems().add(xstd::XExceptionItem(X_HERE, "XScriptRunStack")
                                              .setMess("This is not a refred var")
                                              .setExtend("varType", value.typeName())
                                              .setExtend("varValue", value.toString()));
    }
    return push_refOn(*value.refTarget());
}

HugeVariant& XScriptRunStack::push_refOn(HugeVariant& target)
{
    push_null();
    return m_top[-1].setRef(target);
}

void XScriptRunStack::grow(size_t count)
{
    const size_t room = size_t(s_chunkEnd - m_base);
    if (count > std::min(room, maxSlots)) {
        throw xstd::XExceptionItems().add(xstd::XExceptionItem(X_HERE, "XScriptRunStack")
                                              .setMess("The frame has too many slots")
                                              .setExtend("slots", uint64_t(count)));
    }
    s_next = m_limit = m_base + std::min({room, maxSlots, 2 * count + 16});
}

void XScriptRunStack::extend(size_t count)
{
    if (count > size_t(m_limit - m_base))
        grow(count);
    m_top = m_base + count;
}

void XScriptRunStack::bind(HugeVariant& target, HugeVariant& source)
{
    HugeVariant& named = target.final();
    HugeVariant& end = source.final();
    if (&named == &end)
        return;
    Arena& all = arena();
    const size_t height = all.heightOf(&named);
    const size_t sourceHeight = all.heightOf(&end);
    const bool isOwn = inside(&named, m_base - 1, m_top);
    // A source outside the arena lives as long as this frame, but who knows how long beyond.
    if (height == 0 || (sourceHeight == 0 && !isOwn)) {
        named = HugeVariant(static_cast<const HugeVariant&>(end));
        return;
    }
    const bool isAxOnOwnSlot = &named == m_base - 1 && inside(&end, m_base, m_top);
    if (height < sourceHeight && !isAxOnOwnSlot) {
        if (std::find(all.upward.begin(), all.upward.end(), &named) == all.upward.end())
            all.upward.push_back(&named);
        s_upward = all.upward.size();
    }
    named.setRef(end);
}

void XScriptRunStack::settleAx(const HugeVariant* from) noexcept
{
    HugeVariant& accumulator = ax();
    if (inside(targetOf(accumulator), from, m_top))
        settle(accumulator);
}

void XScriptRunStack::settleUpward(const HugeVariant* from, const HugeVariant* to) noexcept
{
    std::vector<HugeVariant*>& upward = arena().upward;
    std::erase_if(upward, [=](HugeVariant* slot) {
        if (inside(slot, from, to))
            return true;
        if (inside(targetOf(*slot), from, to))
            settle(*slot);
        return !slot->holds(HugeVarClass::Ref);
    });
    s_upward = upward.size();
}

} // namespace huge
