#include <QApplication>
#include <QLocale>
#include <gtest/gtest.h>

int main(int argc, char **argv)
{
    // Screens are tested headless; a test that needs another locale pins it
    // and puts this one back.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QLocale::setDefault(QLocale(QLocale::Italian, QLocale::Italy));
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
