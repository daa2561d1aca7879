#include "support/Finestre.h"

#include <QApplication>
#include <QTest>
#include <QWidget>
#include <gtest/gtest.h>

namespace sorvane::prova {

void Attendi()
{
    for (int i = 0; i < 5; ++i)
        QApplication::processEvents();
}

void MostraAttiva(QWidget *finestra)
{
    finestra->show();
    QApplication::setActiveWindow(finestra);
    EXPECT_TRUE(QTest::qWaitForWindowActive(finestra));
    Attendi();
}

} // namespace sorvane::prova
