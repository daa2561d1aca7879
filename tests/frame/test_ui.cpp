#include "frame/core/Sessione.h"
#include "frame/ui/Cursore.h"
#include "frame/ui/MessaggiQt.h"
#include "frame/ui/Modale.h"
#include "frame/ui/Schermo.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>
#include <gtest/gtest.h>

#include <functional>

using namespace sorvane;

namespace {

// What the box showed while it was up.
struct Visto
{
    QString titolo;
    QString testo;
    QMessageBox::Icon icona = QMessageBox::NoIcon;
    Qt::TextFormat formato = Qt::AutoText;
    QStringList pulsanti;
    QString predefinito;

    Qt::CursorShape cursore = Qt::BitmapCursor; // BitmapCursor: no override cursor
};

// Once the message box is up, notes what it shows and works it with azione.
void QuandoAperta(Visto *visto, std::function<void(QMessageBox *)> azione)
{
    QTimer::singleShot(0, qApp, [visto, azione] {
        auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        if (!box) {
            QuandoAperta(visto, azione); // not shown yet
            return;
        }
        visto->titolo = box->windowTitle();
        visto->testo = box->text();
        visto->icona = box->icon();
        visto->formato = box->textFormat();
        for (QAbstractButton *b : box->buttons())
            visto->pulsanti.append(b->text());
        if (box->defaultButton())
            visto->predefinito = box->defaultButton()->text();
        if (const QCursor *c = QApplication::overrideCursor())
            visto->cursore = c->shape();
        azione(box);
    });
}

void Clicca(Visto *visto, const QString &didascalia)
{
    QuandoAperta(visto, [didascalia](QMessageBox *box) {
        for (QAbstractButton *b : box->buttons()) {
            if (b->text() == didascalia) {
                b->click();
                return;
            }
        }
        box->done(0); // no such button: close, and let the answer fail the test
    });
}

void PremiEsc(Visto *visto)
{
    QuandoAperta(visto, [](QMessageBox *box) { QTest::keyClick(box, Qt::Key_Escape); });
}

Richiesta Chiedi(const QString &testo, const QString &titolo, Icona icona, Pulsanti pulsanti,
                 int predefinito = 0)
{
    return Richiesta{testo, titolo, icona, pulsanti, predefinito};
}

} // namespace

// What the box shows and the button clicked as the answer; without a title
// the program's name, and angle brackets are text, never markup.
TEST(MessaggiQt, MostraLaRichiestaERispondeIlPulsanteCliccato)
{
    const struct
    {
        const char *testo, *titolo;
        Icona icona;
        Pulsanti pulsanti;
        const char *clic;
        Risposta attesa;
        QMessageBox::Icon iconaQt;
        QStringList visti;
    } casi[] = {
        {"CONFERMI LA CANCELLAZIONE?", "ATTENZIONE", Icona::Domanda, Pulsanti::SiNoAnnulla, "No",
         Risposta::No, QMessageBox::Question, {"S\u00ec", "No", "Annulla"}},
        {"TABELLA NON DISPONIBILE", "ERRORE APERTURA TABELLA", Icona::Stop,
         Pulsanti::RiprovaAnnulla, "Riprova", Risposta::Riprova, QMessageBox::Critical,
         {"Riprova", "Annulla"}},
        {"IMPORTO < 0 PER <ROSSI>", "", Icona::Esclamazione, Pulsanti::Ok, "OK", Risposta::Ok,
         QMessageBox::Warning, {"OK"}},
    };
    MessaggiQt qt;
    for (const auto &c : casi) {
        SCOPED_TRACE(c.testo);
        Visto visto;
        Clicca(&visto, QString::fromUtf8(c.clic));
        EXPECT_EQ(qt.chiedi(Chiedi(c.testo, c.titolo, c.icona, c.pulsanti)), c.attesa);
        EXPECT_EQ(visto.titolo, *c.titolo ? QString(c.titolo)
                                          : QApplication::applicationName().toUpper());
        EXPECT_EQ(visto.testo, c.testo);
        EXPECT_EQ(visto.formato, Qt::PlainText);
        EXPECT_EQ(visto.icona, c.iconaQt);
        QStringList visti = visto.pulsanti, attesi = c.visti;
        visti.sort();
        attesi.sort();
        EXPECT_EQ(visti, attesi);
    }
}

// Escape answers Cancel or No where there is one, else the default button;
// a default out of range is the first button.
TEST(MessaggiQt, EscEPulsantePredefinito)
{
    const struct
    {
        Pulsanti pulsanti;
        int predefinito;
        Risposta attesa;
        const char *pulsantePredefinito;
    } casi[] = {
        {Pulsanti::Ok, 0, Risposta::Ok, "OK"}, {Pulsanti::SiNo, 0, Risposta::No, "S\u00ec"},
        {Pulsanti::SiNoAnnulla, 1, Risposta::Annulla, "No"},
        {Pulsanti::InterrompiRiprovaIgnora, 1, Risposta::Riprova, "Riprova"},
        {Pulsanti::InterrompiRiprovaIgnora, 7, Risposta::Interrompi, "Interrompi"},
    };
    MessaggiQt qt;
    for (const auto &c : casi) {
        SCOPED_TRACE(testing::Message() << "pulsanti " << int(c.pulsanti) << " " << c.predefinito);
        Visto visto;
        PremiEsc(&visto);
        EXPECT_EQ(qt.chiedi(Chiedi("x", "t", Icona::Nessuna, c.pulsanti, c.predefinito)),
                  c.attesa);
        EXPECT_EQ(visto.predefinito, QString::fromUtf8(c.pulsantePredefinito));
    }
}

TEST(MessaggiQt, DuranteLAttesaIlMessaggioHaIlPuntatoreNormale)
{
    MessaggiQt qt;
    CursoreAttesa();
    Visto visto;
    Clicca(&visto, QStringLiteral("OK"));
    qt.chiedi(Chiedi("x", "t", Icona::Informazione, Pulsanti::Ok));
    EXPECT_EQ(visto.cursore, Qt::ArrowCursor);
    ASSERT_NE(QApplication::overrideCursor(), nullptr);
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
    CursoreNormale();
}

// Without a handler the dialog really runs; every other test answers
// through one.
TEST(Modale, SenzaGestoreExec)
{
    QDialog dialogo;
    QTimer::singleShot(0, &dialogo, [&dialogo] {

        EXPECT_TRUE(dialogo.isVisible());
        dialogo.done(7);
    });
    EXPECT_EQ(EseguiModale(dialogo), 7);
    QTimer::singleShot(0, &dialogo, &QDialog::accept);
    EXPECT_EQ(EseguiModale(dialogo), QDialog::Accepted);
}

// Delete and the other editing keys work in every kind of field: the key
// filters see typed characters only.
TEST(Schermo, CancEGliAltriTastiDiModificaInOgniCampo)
{
    QWidget schermo;
    auto *colonna = new QVBoxLayout(&schermo);
    QList<QLineEdit *> txt;
    for (int i = 0; i < 3; ++i) {
        txt.append(new QLineEdit(&schermo));
        colonna->addWidget(txt.last());
    }
    (new Schermo(&schermo))->campi(txt, {ModoCifre, ModoImporto, ModoTesto});
    schermo.show();
    schermo.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&schermo));
    for (QLineEdit *campo : txt) {
        campo->setFocus();
        campo->setText(QStringLiteral("1234"));
        campo->setCursorPosition(0);
        QTest::keyClick(campo, Qt::Key_Delete);
        EXPECT_EQ(campo->text(), QStringLiteral("234"));
        QTest::keyClick(campo, Qt::Key_A, Qt::ControlModifier); // all selected
        QTest::keyClick(campo, Qt::Key_Delete);
        EXPECT_TRUE(campo->text().isEmpty()) << qPrintable(campo->text());
        QTest::keyClicks(campo, QStringLiteral("1x"));
    }
    // The filters stand for what is typed.
    EXPECT_EQ(txt[0]->text(), QStringLiteral("1"));
    EXPECT_EQ(txt[2]->text(), QStringLiteral("1X"));
}
