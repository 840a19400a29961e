#include "fontFamilies.h"

#include <QFont>
#include <QStringList>

void substituteFontFamilies()
{
    const QStringList sans = {"Noto Sans CJK SC", "Source Han Sans SC", "WenQuanYi Micro Hei",
                              "WenQuanYi Zen Hei", "Droid Sans Fallback"};
    const QStringList serif = {"Noto Serif CJK SC", "Source Han Serif SC", "AR PL UMing CN",
                               "AR PL SungtiL GB"};
    const QStringList mono = {"Liberation Mono", "DejaVu Sans Mono", "Noto Sans Mono"};
    QFont::insertSubstitutions("微软雅黑", sans);
    QFont::insertSubstitutions("微软雅黑 Light", sans);
    // Where no serif face for Chinese is installed a sans one still shows every character.
    QFont::insertSubstitutions("宋体", serif + sans);
    QFont::insertSubstitutions("Courier New", mono);
}
