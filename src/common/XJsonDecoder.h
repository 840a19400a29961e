#pragma once

#include "common/XKVNode.h"
#include "common/XStringDecoder.h"

namespace xstd {

/// Reads JSON text into a tree. Keys may be bare words, texts may stand in single quotes, numbers
/// may be written in any radix, and a comma may stand behind the last entry. Failures are
/// std::runtime_error with the place in front; containers nest at most 500 deep.
class XJsonDecoder : public XStringDecoder {
public:
    using XStringDecoder::XStringDecoder;

    XToken next() override;
    /// The tree of a whole text. What stands behind its end is not looked at.
    XJson parse(const XString& text);

private:
    bool readScalar(XKVNode& node, const XToken& token) const;
    void readValue(XKVNode& node, const XToken& token);
    void readObject(XKVNode& object);
    void readArray(XKVNode& array);
    bool readSeparator(char close);
    bool isOperator(const XToken& token, char c) const;
    [[noreturn]] void failAt(const XToken& token, const XString& message);

    int m_depth = 0;
};

} // namespace xstd
