// The fields of the management screen: focus in and out, the checks as a
// field is left, the keys that move between fields, the heading press.

#include "distinte/GesDist.h"

#include "distinte/ControllaCampo.h"
#include "distinte/SchermiDistinte.h"
#include "frame/core/Campi.h"
#include "frame/core/Impostazioni.h"
#include "frame/core/Sessione.h"
#include "frame/core/Valore.h"
#include "frame/ui/Schermo.h"
#include "store/Tabelle.h"

#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>

namespace sorvane {

namespace {

constexpr int MascheraCtrl = 2;

bool CampoDelFiltro(int indice) { return indice >= CampoGiornoDal; }

} // namespace

bool GesDist::eventFilter(QObject *oggetto, QEvent *evento)
{
    if (OrdinaDaTestata(m_grid, oggetto, evento, [this](int colonna, bool discendente) {
            OrdinaColonna(colonna, discendente);
        }))
        return false;
    const int indice = EventoCampo(m_txt, oggetto, evento, [this](int i, FuocoCampo fuoco) {
        if (fuoco == FuocoCampo::Entrato)
            fuocoEntrato(i);
        else
            fuocoUscito(i);
    });
    if (indice == 0 || evento->type() != QEvent::KeyPress)
        return QWidget::eventFilter(oggetto, evento);
    const int tasto = static_cast<QKeyEvent *>(evento)->key();
    if (tasto == Qt::Key_Down || tasto == Qt::Key_Up) {
        // Up and down walk the fields of the panel in hand.
        m_controllo->UltimoTasto = tasto == Qt::Key_Down ? TastoGiu : tasti::Su;
        vaiA(campoVicino(indice, tasto == Qt::Key_Down ? 1 : -1));
        return true;
    }
    m_controllo->UltimoTasto = tasto < 0x80 ? tasto : 0;
    return QWidget::eventFilter(oggetto, evento);
}

bool GesDist::tastoGiu(int codice, int maschera)
{
    if (codice == tasti::F4) {
        ApriRicercaCampo();
        return true;
    }
    if (codice == 'R' && (maschera & MascheraCtrl) != 0) {
        if (m_pctLista->isEnabled())
            RipetiMarca();
        return true;
    }
    if (codice != tasti::Invio)
        return false;
    switch (IndiceCampo(m_txt, focusWidget())) {
    case CampoSpese:
        m_cmbBanca->setFocus(Qt::TabFocusReason);
        return true;
    case CampoNomeFiltro:
        m_command1[1]->setFocus(Qt::TabFocusReason);
        return true;
    default:
        return false;
    }
}

void GesDist::ApriRicercaCampo()
{
    // F4: the lookup of the field in focus.
    if (m_campoAttivo == CampoCodiceFiltro) {
        // The full client search; a client chosen moves on to "&ESTRAI".
        CercaClienteEProsegui(m_txt[CampoCodiceFiltro], m_txt[CampoNomeFiltro], m_command1[1],
                              m_apriRicerca);
        return;
    }
    CercaDalCampoMovimento(m_txt, m_campoAttivo, m_controllo->DataMovimento, m_apriRicerca);
}

void GesDist::fuocoEntrato(int indice)
{
    m_fuoco.entrato(indice);
    m_apriRicerca = false;
    m_campoAttivo = indice;
    sessione().CodiceStop = 0;
    if (indice == CampoMoneta && m_txt[indice]->text().trimmed().isEmpty())
        m_txt[indice]->setText(impostazioni().CodBase);
}

void GesDist::fuocoUscito(int indice)
{
    // A field the focus only passed through on its way back to a wrong one
    // is not checked: two wrong dates would send it to and fro. Nor is one
    // left as the screen unloads, or after its tables were closed: a check
    // would look its client up in a table that is gone.
    if (m_errore || m_apriRicerca || m_fuoco.diPassaggio(indice) || m_schermo->inScarico()
        || !tabelle().RsDistinte.IsOpen())
        return;
    const int codice = m_controllo->ControllaCampo(indice);
    if (codice > 0) {
        // The message box takes the focus: what it gives back is no field left.
        m_errore = true;
        int campo = MostraErroreCampo();
        m_errore = false;
        // A filter field keeps the focus (its codes name the field after it).
        if (CampoDelFiltro(indice))
            campo = m_controllo->CampoFuoco > 0 ? m_controllo->CampoFuoco : indice;
        if (campo > 0)
            m_fuoco.tornaA(campo);
        return;
    }
    if (indice == CampoCausale)
        m_cauDes->setText(m_controllo->CauDes.value_or(QString()));
    if (m_controllo->CampoFuoco > 0)
        m_fuoco.tornaA(m_controllo->CampoFuoco);
    if (indice == CampoImporto || indice == CampoSpese) {
        const QString moneta = m_txt[CampoMoneta]->text().trimmed();
        const double valore = LeggiImporto(m_txt[indice]->text()).value_or(0);
        m_txt[indice]->setText(FormatoImporto(moneta, valore, indice == CampoSpese));
    }
}

// The next field of the same panel, upwards or downwards, that can take the
// focus; the field itself at either end.
int GesDist::campoVicino(int indice, int verso) const
{
    const int primo = CampoDelFiltro(indice) ? int(CampoGiornoDal) : int(CampoGiorno);
    const int ultimo = CampoDelFiltro(indice) ? int(CampoNomeFiltro) : int(CampoSpese);
    for (int i = indice + verso; i >= primo && i <= ultimo; i += verso) {
        if (m_txt[i]->isEnabled() && m_txt[i]->isVisibleTo(this))
            return i;
    }
    return indice;
}

} // namespace sorvane
