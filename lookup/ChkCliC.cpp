#include "lookup/ChkCliC.h"

#include "frame/core/Campi.h"
#include "frame/core/Formato.h"
#include "frame/core/Giorni.h"
#include "frame/core/Sessione.h"
#include "frame/ui/Cursore.h"
#include "frame/ui/Finestra.h"
#include "frame/ui/Modale.h"
#include "frame/ui/Schermo.h"
#include "lookup/ModelloAnagrafiche.h"
#include "lookup/StampeAnagrafiche.h"
#include "reports/Esporta.h"
#include "store/Cliente.h"
#include "store/Griglie.h"
#include "store/Tabelle.h"
#include "tables/GesTabel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDate>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QMouseEvent>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>
#include <QTimer>

namespace sorvane {

namespace {

const QString ChiaveGriglia = QStringLiteral("GridRic");
const QString TestoRicerca = QStringLiteral("&RICERCA");
const QString TestoSelezione = QStringLiteral("&SELEZIONA");

// The code tables behind the boxes with a lookup.
QString TabellaBox(int box)
{
    switch (box) {
    case BoxProvincia: return QStringLiteral("TabProvincie");
    case BoxAttivita: return QStringLiteral("TabCliAttivita");
    case BoxRelazione: return QStringLiteral("TabCliRelazioni");
    case BoxReferenze: return QStringLiteral("TabCliReferenze");
    case BoxRiconosci: return QStringLiteral("TabCliRiconoscimenti");
    default: return QString();
    }
}

} // namespace

ChkCliC::ChkCliC(QWidget *padre) : QDialog(padre)
{
    setObjectName(QStringLiteral("ChkCliC"));
    setWindowTitle(QStringLiteral("(") + sessione().CodiceOperatore
                   + QStringLiteral(") RICERCA ANAGRAFICHE              ")
                   + Format(double(GiornoDaData(QDate::currentDate())),
                            QStringLiteral("Long Date")));
    // On return the code says what was chosen: nothing yet.
    Cli().Codice = 0;
    costruisci();
    caricaListe();
    aggiornaPulsanti();
    RipristinaFinestra(this);
    CaricaLayoutLista(m_grid, ChiaveGriglia);
    m_loading = false;
    QTimer::singleShot(0, this, [this] { m_btxt[BoxNome]->setFocus(); });
}

ChkCliC::~ChkCliC() = default;

void ChkCliC::impostaNome(const QString &testo)
{
    m_btxt[BoxNome]->setText(testo.trimmed());
    if (!testo.trimmed().isEmpty())
        Cerca();
}

void ChkCliC::leggiCriteri()
{
    for (int box = 1; box <= NumeroBoxAnagrafica; ++box)
        m_criteri.testi[box] = m_btxt[box]->text();
    m_criteri.azione = m_cmbAzioni->currentIndex() > 0
                           ? m_cmbAzioni->currentData().toString() : QString();
    m_criteri.abbinati = m_chkAbbin->isChecked();
    m_criteri.chiusi = m_chkChiuso->isChecked();
    m_criteri.gruppi = m_chkTeam->isChecked();
}

void ChkCliC::Cerca()
{
    if (m_loading)
        return;
    leggiCriteri();
    CursoreAttesa();
    // A statement that fails leaves the grid empty, and says nothing.
    m_modello->Carica(SqlAnagrafiche(m_criteri, m_ordine));
    CursoreNormale();
    aggiornaPulsanti();
}

void ChkCliC::aggiornaPulsanti()
{
    const bool righe = m_modello->rowCount() > 0;
    m_cmdR[1]->setText(righe ? TestoSelezione : TestoRicerca);
    m_cmdR[3]->setVisible(righe);
    m_cmdR[4]->setVisible(righe);
}

void ChkCliC::Mese_Click(int mese)
{
    if (mese < 0 || mese >= MesiVisite)
        return;
    if (m_criteri.mesi[mese]) {
        m_criteri.mesi[mese] = false;
    } else {
        // A plain click asks for that month alone.
        m_criteri.mesi.fill(false);
        m_criteri.mesi[mese] = true;
    }
    for (int m = 0; m < MesiVisite; ++m)
        coloraMese(m);
    Cerca();
}

void ChkCliC::OrdinaPerColonna(int colonna, Qt::MouseButton pulsante)
{
    if (colonna < 0 || colonna >= NumeroColonneAnagrafica)
        return;
    m_ordine.colonna = std::uint8_t(colonna);
    m_ordine.verso = pulsante == Qt::LeftButton ? VersoCrescente : std::uint8_t(2);
    Cerca();
}

void ChkCliC::Seleziona(int riga)
{
    const std::int32_t codice = m_modello->Codice(riga);
    if (codice < 1)
        return;
    m_rigaAlta = m_grid->rowAt(0);
    m_riga = riga;
    m_colonna = m_grid->currentIndex().column();
    m_grid->setCurrentIndex(m_modello->index(riga, AnaCodice));
    Cli().Codice = codice;
    CaricaCliente(codice);
    Premi_CmdR(0);
}

void ChkCliC::Premi_CmdR(int indice)
{
    switch (indice) {
    case 0:
        if (m_occupato)
            return;
        accept();
        return;
    case 1:
        if (m_cmdR[1]->text() == TestoSelezione) {
            m_cmdR[1]->setText(TestoRicerca);
            m_grid->setFocus();
            if (!m_grid->currentIndex().isValid() && m_modello->rowCount() > 0)
                m_grid->setCurrentIndex(m_modello->index(0, 0));
        } else {
            m_cmdR[1]->setText(TestoSelezione);
            m_btxt[BoxNome]->setFocus();
        }
        return;
    case 2:
        Cerca();
        return;
    case 3:
        stampa(ModuloTelefoni);
        return;
    case 4:
        stampa(ModuloEtichette);
        return;
    default:
        return;
    }
}

void ChkCliC::stampa(const QString &modulo)
{
    if (m_occupato)
        return;
    m_occupato = true;
    leggiCriteri();
    CursoreAttesa();
    StampaClienti(modulo, m_criteri, m_ordine,
                  m_cmbAzioni->currentIndex() > 0 ? m_cmbAzioni->currentText() : QString());
    CursoreNormale();
    m_occupato = false;
}

void ChkCliC::done(int esito)
{
    if (m_occupato)
        return;
    SalvaLayoutLista(m_grid, ChiaveGriglia);
    SalvaFinestra(this);
    m_schermo->scarica();
    QDialog::done(esito);
}

void ChkCliC::ApriRicercaBox(int box)
{
    if (box == BoxNazione || box == BoxSesso) {
        QListWidget *lista = box == BoxNazione ? m_listaNazioni : m_listaSessi;
        QLineEdit *campo = m_btxt[box];
        const QPoint sotto = campo->mapTo(this, QPoint(0, campo->height()));
        lista->setGeometry(sotto.x(), sotto.y(), qMax(campo->width(), 220),
                           qMin(240, 24 + lista->count() * lista->sizeHintForRow(0)));
        lista->show();
        lista->raise();
        lista->setFocus();
        return;
    }
    const QString tabella = TabellaBox(box);
    if (tabella.isEmpty())
        return;
    m_occupato = true;
    auto &t = tabelle();
    ChiudiTabella();
    t.NomeTabella = tabella;
    t.CodiceCercato = m_btxt[box]->text().trimmed();
    t.DescrizioneCercata.clear();
    {
        GesTabel lookup(this);
        lookup.impostaSoloScelta(true);
        EseguiModale(lookup);
    }
    m_occupato = false;
    if (!t.CodiceCercato.isEmpty())
        m_btxt[box]->setText(t.CodiceCercato);
    m_btxt[box]->setFocus();
}

void ChkCliC::entraInLista(QListWidget *lista)
{
    const QLineEdit *campo = m_btxt[lista == m_listaNazioni ? BoxNazione : BoxSesso];
    const QString testo = campo->text().trimmed();
    for (int i = 0; i < lista->count(); ++i) {
        if (!testo.isEmpty() && lista->item(i)->text().left(campo->maxLength()).trimmed() == testo) {
            lista->setCurrentRow(i);
            return;
        }
    }
    lista->setCurrentRow(0);
}

void ChkCliC::esciDaLista(QListWidget *lista)
{
    if (!lista->isVisible())
        return;
    QLineEdit *campo = m_btxt[lista == m_listaNazioni ? BoxNazione : BoxSesso];
    lista->hide();
    if (QListWidgetItem *voce = lista->currentItem()) {
        const QString scelto = voce->text().left(campo->maxLength()).trimmed();
        if (scelto != campo->text().trimmed()) {
            campo->setText(scelto);
            Cerca();
        }
    }
    campo->setFocus();
}

bool ChkCliC::tastoGiu(int codice, int)
{
    QWidget *fuoco = focusWidget();
    const int box = m_btxt.indexOf(qobject_cast<QLineEdit *>(fuoco));
    if (codice == tasti::F4 && box > 0) {
        ApriRicercaBox(box);
        return true;
    }
    if (codice == tasti::Invio && fuoco == m_mesi.last()) {
        InviaTab(fuoco);
        return true;
    }
    if (codice == tasti::Invio && fuoco == m_grid) {
        Seleziona(m_grid->currentIndex().row());
        return true;
    }
    if (codice == tasti::Invio && (fuoco == m_listaNazioni || fuoco == m_listaSessi)) {
        esciDaLista(static_cast<QListWidget *>(fuoco));
        return true;
    }
    if ((codice == tasti::Su || codice == tasti::Giu) && box > 0) {
        focusNextPrevChild(codice == tasti::Giu);
        return true;
    }
    return false;
}

bool ChkCliC::eventFilter(QObject *oggetto, QEvent *evento)
{
    auto *campo = qobject_cast<QLineEdit *>(oggetto);
    const int box = campo ? m_btxt.indexOf(campo) : -1;
    auto *lista = qobject_cast<QListWidget *>(oggetto);
    switch (evento->type()) {
    case QEvent::FocusIn:
        if (box > 0)
            m_valoreEntrato = campo->text().trimmed();
        else if (lista)
            entraInLista(lista);
        break;
    case QEvent::FocusOut:
        // A box left changed searches again; not while the screen goes.
        if (box > 0 && !m_schermo->inScarico() && !m_occupato
            && campo->text().trimmed() != m_valoreEntrato) {
            m_valoreEntrato = campo->text().trimmed();
            Cerca();
        } else if (lista) {
            esciDaLista(lista);
        }
        break;
    case QEvent::MouseButtonDblClick:
        if (box > 0)
            ApriRicercaBox(box);
        else if (lista)
            esciDaLista(lista);
        else if (oggetto == m_grid->viewport())
            Seleziona(m_grid->rowAt(static_cast<QMouseEvent *>(evento)->position().toPoint().y()));
        if (box > 0 || lista || oggetto == m_grid->viewport())
            return true;
        break;
    case QEvent::MouseButtonPress:
        if (oggetto == m_grid->horizontalHeader()->viewport()) {
            auto *mouse = static_cast<QMouseEvent *>(evento);
            OrdinaPerColonna(m_grid->horizontalHeader()->logicalIndexAt(
                                 mouse->position().toPoint()),
                             mouse->button());
            return true;
        }
        break;
    default:
        break;
    }
    return QDialog::eventFilter(oggetto, evento);
}

} // namespace sorvane
