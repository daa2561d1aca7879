#pragma once

// A slip screen shown over the real files, with two firms and a bank, and
// driven as the user drives it: keys to the widget in focus, clicks on the
// grid's cells and headings.

#include "support/Finestre.h"
#include "ProvaDistinte.h"

#include "frame/ui/Fine.h"
#include "store/Connessione.h"

#include <QAbstractButton>
#include <QApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QMainWindow>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPointer>
#include <QTableView>
#include <QTest>

#include <functional>
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
        MostraAttiva(m_schermo.get());
        return *m_schermo;
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

    // The screen as the program shows it, a child window of the frame's
    // area, closed by `esci` with the focus on the client code field
    // `campo` holding a code; the end of the program releases the files.
    // The screen must be gone within a second having asked nothing: its
    // fields check nothing as it unloads, and no table is opened on the
    // released files. A box left unanswered gives its default, as one that
    // cannot be shown does; past a few of them the guard answers Cancel.
    void EsceConCodice(int campo, const std::function<void(Schermo &, QMdiSubWindow *)> &esci)
    {
        m_bk.Close();
        m_dist.Close();
        QMainWindow cornice;
        auto *area = new QMdiArea(&cornice);
        cornice.setCentralWidget(area);
        auto *schermo = new Schermo;
        schermo->setAttribute(Qt::WA_DeleteOnClose);
        QMdiSubWindow *sotto = area->addSubWindow(schermo);
        cornice.resize(1240, 800);
        cornice.show();
        sotto->showMaximized();
        QApplication::setActiveWindow(&cornice);
        ASSERT_TRUE(QTest::qWaitForWindowActive(&cornice));
        Attendi();
        Fuoco(schermo->txt(campo));
        QTest::keyClicks(schermo->txt(campo), QStringLiteral("12"));
        ASSERT_EQ(QApplication::focusWidget(), schermo->txt(campo));

        const QPointer<Schermo> vivo(schermo);
        m_messaggi.pulisci();
        m_messaggi.gestore = [this](const Richiesta &) -> std::optional<Risposta> {
            if (m_messaggi.richieste().size() > 3)
                return Risposta::Annulla;
            return std::nullopt;
        };
        installaFineProgramma([] { ChiudiDatabase(); });
        esci(*schermo, sotto);
        const bool chiuso = QTest::qWaitFor([&vivo] { return vivo.isNull(); }, 1000);
        installaFineProgramma({});
        EXPECT_TRUE(chiuso);
        EXPECT_TRUE(m_messaggi.testi().isEmpty()) << qPrintable(m_messaggi.testi().join(" | "));
        delete vivo.data();
        ASSERT_TRUE(ConnettiDatabase());
    }
    // The three ways out: F2, Alt+U (the accelerator of "&USCITA"), the
    // child window's close box.
    void EsceInTreModi(int campo)
    {
        for (int modo = 0; modo < 3; ++modo) {
            SCOPED_TRACE(modo);
            EsceConCodice(campo, [modo, campo](Schermo &s, QMdiSubWindow *sotto) {
                if (modo == 0)
                    QTest::keyClick(s.txt(campo), Qt::Key_F2);
                else if (modo == 1)
                    QTest::keyClick(s.txt(campo), Qt::Key_U, Qt::AltModifier);
                else
                    sotto->close();
            });
        }
    }

    std::unique_ptr<Schermo> m_schermo;
};

} // namespace sorvane::prova
