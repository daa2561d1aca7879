// The fields of the 04 ledger's screen: focus in and out, the checks as a
// field is left, the keys that move on.

#include "ledger04/GesDist4.h"

#include "distinte/SchermiDistinte.h"
#include "frame/core/Campi.h"
#include "frame/core/Sessione.h"
#include "frame/core/Valore.h"
#include "frame/ui/Schermo.h"
#include "ledger04/ControllaCampo4.h"
#include "ledger04/EleCli.h"
#include "store/Tabelle.h"
#include "tables/GesCambi.h"
#include "tables/GesTabel.h"

#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

namespace sorvane {

namespace {

bool CampoDelFiltro(int indice) { return indice >= Campo04GiornoDal; }

} // namespace

bool GesDist4::eventFilter(QObject *oggetto, QEvent *evento)
{
    const int indice = EventoCampo(m_txt, oggetto, evento, [this](int i, FuocoCampo fuoco) {
        if (fuoco == FuocoCampo::Entrato)
            fuocoEntrato(i);
        else
            fuocoUscito(i);
    });
    if (indice > 0 && evento->type() == QEvent::KeyPress) {
        const int tasto = static_cast<QKeyEvent *>(evento)->key();
        m_controllo->base.UltimoTasto =
            tasto == Qt::Key_Down ? tasti::Giu : (tasto < 0x80 ? tasto : 0);
    }
    return QWidget::eventFilter(oggetto, evento);
}

bool GesDist4::tastoGiu(int codice, int maschera)
{
    if (codice == tasti::F4 && IndiceCampo(m_txt, focusWidget()) == Campo04Moneta) {
        // The currency's picker, on the day the fields hold; the field is
        // checked when the focus comes back.
        QLineEdit *moneta = m_txt[Campo04Moneta];
        m_occupato = true;
        ScegliMonetaDelCampo(moneta, m_txt[Campo04Giorno]->text() + QLatin1Char('/')
                                         + m_txt[Campo04Mese]->text() + QLatin1Char('/')
                                         + m_txt[Campo04Anno]->text());
        m_occupato = false;
        moneta->setFocus(Qt::OtherFocusReason);
        return true;
    }
    if (codice == tasti::F4 && IndiceCampo(m_txt, focusWidget()) == Campo04Causale) {
        // The reasons' lookup; the field is checked when the focus comes back.
        m_occupato = true;
        CercaCausale(m_txt[Campo04Causale]);
        m_occupato = false;
        m_txt[Campo04Causale]->setFocus(Qt::OtherFocusReason);
        return true;
    }
    if (codice != tasti::Invio)
        return false;
    if (IndiceCampo(m_txt, focusWidget()) == Campo04NomeFiltro) {
        m_command1[1]->setFocus(Qt::TabFocusReason);
        return true;
    }
    return false;
}

bool GesDist4::fermo() const
{
    // Not while a message, a popup or a button's routine holds the focus,
    // nor once the screen unloads and its tables close.
    return m_errore || m_occupato || m_schermo->inScarico() || !tabelle().RsDistinte04.IsOpen();
}

void GesDist4::fuocoEntrato(int indice)
{
    m_fuoco.entrato(indice);
    sessione().CodiceStop = 0;
    if (indice == Campo04Moneta && m_txt[indice]->text().trimmed().isEmpty())
        m_txt[indice]->setText(m_controllo->MonetaProposta());
}

void GesDist4::fuocoUscito(int indice)
{
    if (fermo() || m_fuoco.diPassaggio(indice))
        return;
    m_occupato = true;
    const int codice = m_controllo->ControllaCampo4(indice);
    m_occupato = false;
    if (m_controllo->Squadra)
        m_lbTeam->setText(*m_controllo->Squadra);
    if (codice > 0) {
        m_errore = true;
        int campo = MostraErroreCampo4();
        m_errore = false;
        if (CampoDelFiltro(indice))
            campo = indice;
        m_fuoco.tornaA(campo);
        return;
    }
    if (indice == Campo04Causale)
        m_cauDes->setText(m_controllo->base.CauDes.value_or(QString()));
    if (indice == Campo04Importo) {
        const QString moneta = m_txt[Campo04Moneta]->text().trimmed();
        m_txt[indice]->setText(
            FormatoImporto(moneta, LeggiImporto(m_txt[indice]->text()).value_or(0)));
    }
    if (m_controllo->CampoFuoco > 0)
        m_fuoco.tornaA(m_controllo->CampoFuoco);
    else if (m_controllo->VersoEstrai)
        QTimer::singleShot(0, m_command1[1], [b = m_command1[1]] { b->setFocus(); });
}

} // namespace sorvane
