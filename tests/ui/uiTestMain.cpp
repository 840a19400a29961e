#include "XTavixApplication.h"
#include "fontFamilies.h"
#include "tavix.h"

#include <QTextCodec>

#include <gtest/gtest.h>

/// The leak checker's list: what Qt itself leaves at the end is none of ours.
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions()
{
    return "leak:libqoffscreen.so\nleak:libQt5Gui.so\nleak:libQt5Core.so\n";
}

int main(int argc, char** argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen"); // the tests need no display and disturb none
    XTavixApplication application(argc, argv);
    theApplication = &application;
    substituteFontFamilies();
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    return RUN_ALL_TESTS();
}
