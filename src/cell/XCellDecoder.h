#pragma once

#include "script/XScriptDecoder.h"

namespace huge {

/// Reads references as single words: "A1", "$B$2:C4", "r:5". A ":" that no reference goes on
/// behind stays an operator.
class XCellDecoder final : public XScriptDecoder {
public:
    using XScriptDecoder::XScriptDecoder;

    xstd::XToken getLabel() override;

private:
    bool readNumber(xstd::XToken& word);
    bool readSecondCell(xstd::XToken& word);
};

} // namespace huge
