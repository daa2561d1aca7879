// The fields of the entry screen: focus in and out, the checks as a field
// is left, the keys that move between fields.

#include "distinte/InsDist.h"

#include "distinte/CampiInsDist.h"
#include "distinte/Movimento.h"
#include "distinte/SchermiDistinte.h"
#include "frame/core/Campi.h"
#include "frame/core/Impostazioni.h"
#include "frame/core/Sessione.h"
#include "frame/core/Valore.h"
#include "frame/ui/Schermo.h"
#include "store/Tabelle.h"

#include <QComboBox>
#include <QFocusEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPushButton>
#include <QTableView>
#include <QTimer>

namespace sorvane {

namespace {

constexpr int UltimoProdotto = CampoPrimoGiro - 1; // 11

bool Vuoto(const QLineEdit *campo) { return campo->text().trimmed().isEmpty(); }

} // namespace

bool InsDist::eventFilter(QObject *oggetto, QEvent *evento)
{
    if (OrdinaDaTestata(m_grid, oggetto, evento,
                        [this](int colonna, bool giu) { OrdinaColonna(colonna, giu); }))
        return false;
    const int indice = EventoCampo(m_txt, oggetto, evento, [this](int i, FuocoCampo fuoco) {
        if (fuoco == FuocoCampo::Entrato)
            fuocoEntrato(i);
        else
            fuocoUscito(i);
    });
    if (indice == 0)
        return QWidget::eventFilter(oggetto, evento);
    switch (evento->type()) {
    case QEvent::KeyPress: {
        const auto *tasto = static_cast<QKeyEvent *>(evento);
        switch (tasto->key()) {
        case Qt::Key_Down:
            m_controllo->UltimoTasto = TastoGiu;
            vaiA(campoSotto(indice));
            return true;
        case Qt::Key_Up:
            m_controllo->UltimoTasto = tasti::Su;
            vaiA(campoSopra(indice));
            return true;
        case Qt::Key_Home:
            m_controllo->UltimoTasto = tasti::Home;
            vaiA(CampoGiorno);
            return true;
        default:
            m_controllo->UltimoTasto = tasto->key() < 0x80 ? tasto->key() : 0;
            break;
        }
        break;
    }
    default:
        break;
    }
    return QWidget::eventFilter(oggetto, evento);
}

bool InsDist::tastoGiu(int codice, int)
{
    if (codice == tasti::F4) {
        ApriRicercaCampo();
        return true;
    }
    if (codice == tasti::Invio && IndiceCampo(m_txt, focusWidget()) == CampoAssegno) {
        m_cmbBanca->setFocus(Qt::TabFocusReason);
        return true;
    }
    return false;
}

void InsDist::ApriRicercaCampo()
{
    // F4: the lookup of the field in focus.
    if (m_campoAttivo == CampoCodiceCliente) {
        // The full client search; a client chosen moves on to the reason.
        CercaClienteEProsegui(m_txt[CampoCodiceCliente], m_txt[CampoNomeCliente],
                              m_txt[CampoCausale], m_apriRicerca);
        return;
    }
    CercaDalCampoMovimento(m_txt, m_campoAttivo, m_controllo->DataMovimento, m_apriRicerca);
}

void InsDist::fuocoEntrato(int indice)
{
    m_apriRicerca = false;
    m_campoAttivo = indice;
    sessione().CodiceStop = 0;
    if (indice == CampoMoneta && Vuoto(m_txt[indice]))
        m_txt[indice]->setText(impostazioni().CodBase);
}

bool InsDist::controlliSospesi() const
{
    // A check would look clients and reasons up in tables already closed.
    return m_schermo->inScarico() || !m_bk.IsOpen() || !tabelle().RsDistinte.IsOpen();
}

void InsDist::fuocoUscito(int indice)
{
    if (m_errore || m_apriRicerca || controlliSospesi())
        return;
    const int codice = m_controllo->ControllaCampo(indice);
    if (codice > 0) {
        // The message box takes the focus: what it gives back is no field left.
        m_errore = true;
        const int campo = MostraErroreCampo();
        m_errore = false;
        if (campo > 0)
            QTimer::singleShot(0, this, [this, campo] { vaiA(campo); });
        return;
    }
    if (indice == CampoCausale)
        m_cauDes->setText(m_controllo->CauDes.value_or(QString()));
    if (m_controllo->CampoFuoco > 0) {
        const int campo = m_controllo->CampoFuoco;
        QTimer::singleShot(0, this, [this, campo] { vaiA(campo); });
    }
    m_command1[1]->setVisible(AggiungiVisibile(*m_campi));
    if (indice == CampoImporto || indice == CampoSpese) {
        const QString moneta = m_txt[CampoMoneta]->text().trimmed();
        const double valore = LeggiImporto(m_txt[indice]->text()).value_or(0);
        m_txt[indice]->setText(FormatoImporto(moneta, valore, indice == CampoSpese));
    }
}

QStringList InsDist::statoMovimento() const
{
    // A new movement keeps date, client and firm from the last one: only
    // what follows them is its own. The currency the focus fills in and an
    // amount of 0 were never typed.
    const bool modifica = m_codiceMovimento != 0;
    QStringList stato;
    if (modifica)
        stato << m_cmbSoc->currentText();
    stato << m_cmbBanca->currentText();
    for (int i = modifica ? int(CampoGiorno) : int(CampoCausale); i <= CampoSpese; ++i) {
        QString testo = m_txt[i]->text().trimmed();
        if (i == CampoMoneta && testo == impostazioni().CodBase)
            testo.clear();
        else if (i == CampoImporto || i == CampoSpese)
            testo = CDbl(testo) == 0 ? QString() : QString::number(CDbl(testo));
        stato << testo;
    }
    return stato;
}

void InsDist::vaiA(int indice)
{
    if (QLineEdit *campo = m_txt.value(indice))
        campo->setFocus(Qt::OtherFocusReason);
}

// The next field that can take the focus. A blank slice left downwards
// skips the rest of its group when the group is blank from there on.
int InsDist::campoSotto(int indice) const
{
    auto vuotiFinoA = [this, indice](int ultimo) {
        for (int i = indice; i <= ultimo; ++i) {
            if (!Vuoto(m_txt[i]))
                return false;
        }
        return true;
    };
    if (indice >= CampoPrimoProdotto && indice <= UltimoProdotto && vuotiFinoA(UltimoProdotto))
        return CampoPrimoGiro;
    if (indice >= CampoPrimoGiro && indice <= CampoUltimoGiro && vuotiFinoA(CampoUltimoGiro))
        return CampoMoneta;
    for (int i = indice + 1; i <= CampoSpese; ++i) {
        if (m_txt[i]->isEnabled() && m_txt[i]->isVisibleTo(this))
            return i;
    }
    return indice;
}

int InsDist::campoSopra(int indice) const
{
    for (int i = indice - 1; i >= CampoGiorno; --i) {
        if (m_txt[i]->isEnabled() && m_txt[i]->isVisibleTo(this))
            return i;
    }
    return indice;
}

} // namespace sorvane
