#include "cell/cellName.h"

#include <algorithm>

namespace huge {

xstd::XString columnText(int32_t col)
{
    xstd::XString text;
    for (int32_t rest = col; rest >= 0; rest = rest / 26 - 1)
        text.push_back(static_cast<char>('A' + rest % 26));
    std::reverse(text.begin(), text.end());
    return text;
}

xstd::XString cellName(int32_t row, int32_t col)
{
    xstd::XString text = columnText(col);
    text += std::to_string(static_cast<int64_t>(row) + 1);
    return text;
}

} // namespace huge
