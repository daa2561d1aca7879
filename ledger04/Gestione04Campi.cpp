// The fields of the 04 list screens: focus in and out, the checks as a
// field is left, the keys that move on, F4 on the clients, the reason and
// the currencies.

#include "ledger04/Gestione04.h"

#include "frame/core/Campi.h"
#include "frame/core/Sessione.h"
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

bool Gestione04::eventFilter(QObject *oggetto, QEvent *evento)
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

std::optional<QString> Gestione04::dataDellaMoneta(int indice) const
{
    if (indice != Campo04Moneta)
        return std::nullopt;
    return m_txt[Campo04Giorno]->text() + QLatin1Char('/') + m_txt[Campo04Mese]->text()
           + QLatin1Char('/') + m_txt[Campo04Anno]->text();
}

bool Gestione04::tastoGiu(int codice, int maschera)
{
    Q_UNUSED(maschera);
    const int indice = IndiceCampo(m_txt, focusWidget());
    const std::optional<QString> giorno = dataDellaMoneta(indice);
    if (codice == tasti::F4 && giorno) {
        // The currency's picker, on the day beside the field; the field is
        // checked when the focus comes back.
        QLineEdit *moneta = m_txt[indice];
        m_occupato = true;
        ScegliMonetaDelCampo(moneta, *giorno);
        m_occupato = false;
        moneta->setFocus(Qt::OtherFocusReason);
        return true;
    }
    if (codice == tasti::F4 && indice == Campo04Causale) {
        // The reasons' lookup; the field is checked when the focus comes back.
        m_occupato = true;
        CercaCausale(m_txt[Campo04Causale]);
        m_occupato = false;
        m_txt[Campo04Causale]->setFocus(Qt::OtherFocusReason);
        return true;
    }
    const bool cliente = indice == Campo04CodiceCliente || indice == campoCodiceFiltro();
    if (codice == tasti::F4 && cliente) {
        // The full client search; a client chosen moves on to the reason in
        // the form, to "&ESTRAI" in the filter.
        QWidget *dopo = m_command1[1];
        if (indice == Campo04CodiceCliente)
            dopo = m_txt[Campo04Causale];
        CercaClienteEProsegui(m_txt[indice], m_txt[indice + 1], dopo, m_occupato);
        return true;
    }
    if (codice == tasti::Invio && indice == campoNomeFiltro()) {
        m_command1[1]->setFocus(Qt::TabFocusReason);
        return true;
    }
    return false;
}

bool Gestione04::fermo() const
{
    // Not while a message, a popup or a button's routine holds the focus,
    // nor once the screen unloads and its tables close.
    return m_errore || m_occupato || m_schermo->inScarico() || !tabelle().RsDistinte04.IsOpen();
}

void Gestione04::fuocoEntrato(int indice)
{
    m_fuoco.entrato(indice);
    sessione().CodiceStop = 0;
    if (indice == Campo04Moneta && m_txt[indice]->text().trimmed().isEmpty())
        m_txt[indice]->setText(m_controllo->MonetaProposta());
    if (indice >= Campo04GiornoDal)
        filtroEntrato(indice);
}

int Gestione04::controllaCampo(int indice) { return m_controllo->ControllaCampo4(indice); }

int Gestione04::mostraErrore() { return MostraErroreCampo4(); }

void Gestione04::fuocoUscito(int indice)
{
    if (fermo() || m_fuoco.diPassaggio(indice))
        return;
    m_occupato = true;
    const int codice = controllaCampo(indice);
    m_occupato = false;
    if (m_controllo->Squadra)
        m_lbTeam->setText(*m_controllo->Squadra);
    if (codice > 0) {
        m_errore = true;
        int campo = mostraErrore();
        m_errore = false;
        if (indice >= Campo04GiornoDal)
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
    if (indice >= Campo04GiornoDal) {
        m_occupato = true;
        filtroLasciato(indice);
        m_occupato = false;
    }
    if (m_controllo->CampoFuoco > 0)
        m_fuoco.tornaA(m_controllo->CampoFuoco);
    else if (m_controllo->VersoEstrai)
        QTimer::singleShot(0, m_command1[1], [b = m_command1[1]] { b->setFocus(); });
}

} // namespace sorvane
