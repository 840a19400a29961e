#include "XTavixApplication.h"
#include "fontFamilies.h"
#include "tavix.h"

#include <QTextCodec>

#include <gtest/gtest.h>

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
