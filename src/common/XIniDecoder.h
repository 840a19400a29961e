#pragma once

#include "common/XKVNode.h"
#include "common/XStringDecoder.h"

namespace xstd {

/// Reads an INI file into an object: sections are objects, all values are texts. A semicolon or a
/// number sign begins a comment. Failures are std::runtime_error with the place in front.
class XIniDecoder : public XStringDecoder {
public:
    using XStringDecoder::XStringDecoder;

    int32_t skipBlank() override;
    XToken next() override;
    XKVNode parse(const XString& text);

private:
    XString readSectionName();
    XString readValue();
    void readEntry(XKVNode& section, const XString& key);
    void readSection(XKVNode& root);
};

} // namespace xstd
