#pragma once

#include "cell/XCellRangeRef.h"
#include "common/XString.h"
#include "hash/XHash.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <vector>

namespace huge {

class ScriptSet;
class XScriptProgram;

/// A compiled script that all cells share whose formulas are the same in relative terms. It lives
/// as long as a cell, or a snapshot of one, holds its counted pointer, and leaves its set with the
/// last of them.
struct ScriptItem {
    ScriptItem() = default;
    ScriptItem(const ScriptItem&) = delete;
    ScriptItem& operator=(const ScriptItem&) = delete;
    ~ScriptItem();

    ScriptSet* owner = nullptr; ///< the set that finds it; null when that was emptied meanwhile
    int32_t row = 0;            ///< the cell for which it was compiled first
    int32_t col = 0;
    xstd::XString text; ///< the source, without "=" in front
    std::shared_ptr<const XScriptProgram> program;
    XCellRangeRefs ranges; ///< in relative form
    xstd::h160 hash;       ///< of the program's image

    /// The source as a cell shows it whose absolute references are `refs`, those of this script.
    xstd::XString textAt(std::vector<XCellRangeRef> refs, bool showRef) const;
};

/// Holds one reference count of a script.
using ScriptItemPtr = std::shared_ptr<ScriptItem>;

/// The scripts of a table, one per distinct program. It points at the scripts; those who use them
/// keep them alive.
class ScriptSet {
public:
    ScriptSet() = default;
    ScriptSet(const ScriptSet&) = delete;
    ScriptSet& operator=(const ScriptSet&) = delete;
    ~ScriptSet() { clear(); }

    /// The script with this program. One that is here already keeps its own text; else it is made
    /// of these arguments, compiled for the cell (row, col).
    ScriptItemPtr put(int32_t row, int32_t col, const xstd::XString& text,
                      std::shared_ptr<const XScriptProgram> program, const XCellRangeRefs& ranges);
    /// As put, but one that is here already takes this text and these references.
    ScriptItemPtr putReplacing(int32_t row, int32_t col, const xstd::XString& text,
                               std::shared_ptr<const XScriptProgram> program,
                               const XCellRangeRefs& ranges);

    /// Looks a program up by the digest of its image; null when it is not here.
    ScriptItemPtr find(const std::vector<uint8_t>& code) const;
    bool contains(const std::vector<uint8_t>& code) const { return find(code) != nullptr; }

    size_t size() const noexcept { return m_hashIndex.size(); }
    /// Forgets every script. Those that are still held stay usable, outside the set.
    void clear();

private:
    friend struct ScriptItem;

    std::map<xstd::h160, std::weak_ptr<ScriptItem>> m_hashIndex;
    std::weak_ptr<ScriptItem> m_last; // that put gave out
};

} // namespace huge
