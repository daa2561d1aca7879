#pragma once

// A slip screen shown over the real files, with two firms and a bank, and
// driven as the user drives it: keys to the widget in focus, clicks on the
// grid's cells and headings.

#include "ProvaDistinte.h"

#include <QAbstractButton>
#include <QApplication>
#include <QHeaderView>
#include <QTableView>
#include <QTest>

#include <memory>

namespace sorvane::prova {

template <class Schermo>
class ProvaSchermo : public ProvaDistinte
{
protected:
    void SetUp() override
    {
        ProvaDistinte::SetUp();
        for (const char *ditta : {"ALFA SIM", "BETA FONDI"})
            Scrivi(QStringLiteral("INSERT INTO Societa (SocNome) VALUES (?)"),
                   {QString::fromLatin1(ditta)});
        Scrivi(QStringLiteral("INSERT INTO DistBanche (CodBanca) VALUES ('BPM')"));
    }
    void TearDown() override
    {
        m_schermo.reset();
        ProvaDistinte::TearDown();
    }

    Schermo &Apri()
    {
        m_schermo = std::make_unique<Schermo>();
        m_schermo->resize(1220, 720);
        m_schermo->show();
        QApplication::setActiveWindow(m_schermo.get());
        EXPECT_TRUE(QTest::qWaitForWindowActive(m_schermo.get()));
        Attendi();
        return *m_schermo;
    }

    static void Attendi()
    {
        for (int i = 0; i < 5; ++i)
            QApplication::processEvents();
    }
    // A click, or the focus, and what follows from it.
    static void Premi(QAbstractButton *pulsante)
    {
        pulsante->click();
        Attendi();
    }
    static void Fuoco(QWidget *campo)
    {
        campo->setFocus();
        Attendi();
    }
    static void Tasto(Qt::Key tasto, Qt::KeyboardModifiers modi = Qt::NoModifier)
    {
        QTest::keyClick(QApplication::focusWidget(), tasto, modi);
        Attendi();
    }
    // The first click of the pair, then the double click.
    void DoppioClick(const QModelIndex &cella)
    {
        ASSERT_TRUE(cella.isValid());
        QTableView *g = m_schermo->TDBGrid1();
        g->scrollTo(cella);
        const QPoint punto = g->visualRect(cella).center();
        QTest::mouseClick(g->viewport(), Qt::LeftButton, {}, punto);
        QTest::mouseDClick(g->viewport(), Qt::LeftButton, {}, punto);
        Attendi();
    }
    void Testata(int colonna, Qt::MouseButton tasto)
    {
        QHeaderView *h = m_schermo->TDBGrid1()->horizontalHeader();
        QTest::mousePress(h->viewport(), tasto, {},
                          QPoint(h->sectionViewportPosition(colonna) + 4, 4));
        Attendi();
    }

    std::unique_ptr<Schermo> m_schermo;
};

} // namespace sorvane::prova
