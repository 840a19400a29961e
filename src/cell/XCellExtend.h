#pragma once

#include "common/XKVNode.h"
#include "numbers/XFormatRule.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace huge {

/// The format record of a cell, as far as the engine knows it: the number format, and how to copy
/// and store the record. Fonts, colours and borders belong to the class that the interface derives.
class XCellExtend {
public:
    virtual ~XCellExtend() = default;

    /// A new record with the same content; the caller owns it.
    virtual std::unique_ptr<XCellExtend> clone() const = 0;
    /// Takes over the content of `other`, which is of the same class.
    virtual void assign(const XCellExtend& other) = 0;
    /// Mirrors what has a direction, for a cell that is transposed. Nothing here has one.
    virtual void transpose() {}

    /// The record as it stands in documents, as text and as bytes, and the reverse; the engine's
    /// part holds nothing. fromBinary throws std::runtime_error for an image that is damaged.
    virtual xstd::XJson toJson() const { return {}; }
    virtual std::vector<uint8_t> toBinary() const { return {}; }
    virtual void fromJson(const xstd::XKVNode&) {}
    virtual void fromBinary(const std::vector<uint8_t>&) {}

    XFormatRule& rule() { return formatRule; }
    const XFormatRule& rule() const { return formatRule; }
    /// The number format alone, in the same two forms. ruleFromBinary takes the first 8 bytes and
    /// throws std::runtime_error where there are fewer.
    xstd::XJson ruleToJson() const;
    void ruleFromJson(const xstd::XKVNode& node);
    std::vector<uint8_t> ruleToBinary() const;
    void ruleFromBinary(const std::vector<uint8_t>& bytes);

    XFormatRule formatRule;

protected:
    XCellExtend() = default;
    XCellExtend(const XCellExtend&) = default;
    XCellExtend& operator=(const XCellExtend&) = default;
};

} // namespace huge
