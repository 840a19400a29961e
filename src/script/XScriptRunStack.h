#pragma once

#include "values/HugeVariant.h"

#include <cstddef>
#include <cstdint>
#include <new>
#include <utility>

namespace huge {

/// The slots of one frame, with the frame's accumulator in front of them. The slots of all frames
/// of all runs stand in one arena, frame upon frame, and never move, whatever is pushed: references
/// point at slots. A slot that no frame uses is null.
///
/// A reference may stand on any slot of its own frame or of a frame below. What keeps it from
/// outliving its target: when slots are cut, those references on them that are to stay become
/// copies of the values. Only two kinds can be concerned, because every other reference stands
/// above its target and goes first: the frame's own accumulator, which is looked at each time, and
/// the slots that bind() noted because they lie below their target. A handle outside the arena (a
/// captured variable, a variable of the environment) never holds a reference.
///
/// Frames are opened and closed in order; only the last one opened may be used.
class XScriptRunStack {
public:
    /// Slots that a frame may have: more than operands can name.
    static constexpr size_t maxSlots = 65600;
    /// What a recursion fails with that finds no more room, here or elsewhere.
    static constexpr const char* tooDeep = "Closure calls are nested too deep";

    XScriptRunStack() noexcept = default;

    /// Opens a frame with room for this many slots; it grows beyond that when it must.
    void open(size_t reserved)
    {
        if (size_t(s_chunkEnd - s_next) <= reserved) [[unlikely]]
            openChunk(reserved);
        m_base = m_top = s_next + 1;
        s_next = m_limit = m_base + reserved;
    }
    /// Closes the frame: all slots and the accumulator go.
    void close() noexcept
    {
        cut(m_base);
        if (s_upward != 0) [[unlikely]]
            settleUpward(m_base - 1, m_base);
        m_base[-1].clear_();
        s_next = m_base - 1;
        if (s_next == s_chunk) [[unlikely]]
            closeChunk();
    }

    HugeVariant& ax() const noexcept { return m_base[-1]; }
    size_t size() const noexcept { return size_t(m_top - m_base); }

    /// Appends a null slot, a copy of value (of its target, if it is a reference), the value
    /// itself.
    void push_null()
    {
        if (m_top == m_limit) [[unlikely]]
            grow(size() + 1);
        ++m_top;
    }
    void push(const HugeVariant& value) { push_move(HugeVariant(value)); }
    void push_move(HugeVariant&& value)
    {
        if (m_top == m_limit) [[unlikely]]
            grow(size() + 1);
        ::new (static_cast<void*>(m_top)) HugeVariant(std::move(value)); // the slot is null
        ++m_top;
    }
    /// Appends a reference on the target of value and gives the new slot. Throws "This is not a
    /// refred var" ("XScriptRunStack") if value is none.
    HugeVariant& push_ref_(const HugeVariant& value);
    /// Appends a reference on target itself.
    HugeVariant& push_refOn(HugeVariant& target);

    void pop() { resize(size() == 0 ? 0 : size() - 1); }
    /// Cuts the frame, or extends it with null slots.
    void resize(size_t count)
    {
        if (count < size())
            cut(m_base + count);
        else if (count > size())
            extend(count);
    }
    /// The slot; the frame first grows up to it.
    HugeVariant& at(size_t index)
    {
        if (index >= size()) [[unlikely]]
            extend(index + 1);
        return m_base[index];
    }
    /// The address of the last count slots, null for 0. There must be as many.
    HugeVariant* args(size_t count) const noexcept { return count == 0 ? nullptr : m_top - count; }

    /// Makes target another name of source. Where target would outlive source and nothing in the
    /// arena could tell it so, target takes a copy instead.
    void bind(HugeVariant& target, HugeVariant& source);

    /// Whether a slot may be what a handle below it stands for.
    static bool anyUpward() noexcept { return s_upward != 0; }

    /// Whether any frame is open, in any run.
    static bool anyOpen() noexcept { return s_next != s_bottom; }

private:
    static void openChunk(size_t reserved);
    static void closeChunk() noexcept;
    void grow(size_t count);
    void extend(size_t count);
    void cut(HugeVariant* from) noexcept
    {
        if (m_base[-1].holds(HugeVarClass::Ref)) [[unlikely]]
            settleAx(from);
        if (s_upward != 0) [[unlikely]]
            settleUpward(from, m_top);
        while (m_top != from) {
            if ((--m_top)->object() != nullptr)
                m_top->clear_();
        }
    }
    void settleAx(const HugeVariant* from) noexcept;
    static void settleUpward(const HugeVariant* from, const HugeVariant* to) noexcept;

    // The room of the arena above the last open frame.
    static HugeVariant* s_next;
    static HugeVariant* s_chunk; ///< where the part of the arena begins that s_next is in
    static HugeVariant* s_chunkEnd;
    static HugeVariant* s_bottom; ///< where the first frame begins
    static size_t s_upward;       ///< references noted because they lie below their target

    HugeVariant* m_base = nullptr; ///< slot 0
    HugeVariant* m_top = nullptr;
    HugeVariant* m_limit = nullptr;
};

} // namespace huge
