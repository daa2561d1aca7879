#include "lookup/ListaCli.h"

#include "frame/ui/Cursore.h"
#include "frame/ui/Finestra.h"
#include "frame/ui/Schermo.h"
#include "store/Cliente.h"

#include <QAbstractTableModel>
#include <QApplication>
#include <QCheckBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPointer>
#include <QPushButton>
#include <QStyle>
#include <QTableView>

#include <algorithm>
#include <cmath>

namespace sorvane {

namespace {

struct ColonnaGriglia
{
    const char *titolo;
    int larghezza; // twips
    Qt::Alignment allineamento;
};

const ColonnaGriglia Colonne[NumeroColonneListaCli] = {
    {"Codice", 600, Qt::AlignRight},    {"Nominativo", 3700, Qt::AlignLeft},
    {"Indirizzo", 3300, Qt::AlignLeft}, {"Località", 3300, Qt::AlignLeft},
    {"Sqd", 400, Qt::AlignLeft},        {"Ch", 280, Qt::AlignHCenter},
};

// Twips of the layout.
constexpr int LarghezzaMinima = 12080;
constexpr int RigheVisibili = 40;
constexpr int LineaGriglia = 15;
constexpr int LarghezzaPulsante = 1500;

std::uint8_t VersoDaPulsante(Qt::MouseButton pulsante)
{
    // The classic button numbers: 1 left, 2 right, 4 middle.
    switch (pulsante) {
    case Qt::LeftButton:
        return 1;
    case Qt::MiddleButton:
        return 4;
    default:
        return 2;
    }
}

int Twips(int pixel) { return InTwips(pixel); }

} // namespace

// The grid's rows as ElencoClienti holds them.
class ModelloListaCli : public QAbstractTableModel
{
public:
    explicit ModelloListaCli(ElencoClienti &elenco, QObject *parent)
        : QAbstractTableModel(parent), m_elenco(elenco)
    {
    }

    int rowCount(const QModelIndex &padre = {}) const override
    {
        return padre.isValid() ? 0 : int(m_elenco.Righe().size());
    }
    int columnCount(const QModelIndex &padre = {}) const override
    {
        return padre.isValid() ? 0 : NumeroColonneListaCli;
    }
    QVariant data(const QModelIndex &indice, int ruolo) const override
    {
        if (!indice.isValid() || indice.row() >= rowCount())
            return {};
        if (ruolo == Qt::DisplayRole)
            return m_elenco.Righe()[indice.row()][indice.column()];
        if (ruolo == Qt::TextAlignmentRole)
            return QVariant::fromValue(Colonne[indice.column()].allineamento
                                       | Qt::AlignVCenter);
        return {};
    }
    QVariant headerData(int sezione, Qt::Orientation verso, int ruolo) const override
    {
        if (verso != Qt::Horizontal || sezione < 0 || sezione >= NumeroColonneListaCli)
            return {};
        if (ruolo == Qt::DisplayRole)
            return QString::fromUtf8(Colonne[sezione].titolo);
        if (ruolo == Qt::TextAlignmentRole)
            return QVariant::fromValue(Qt::AlignLeft | Qt::AlignVCenter);
        return {};
    }

    void inizia() { beginResetModel(); }
    void finisci() { endResetModel(); }

    // The matches come as the grid scrolls to them.
    bool canFetchMore(const QModelIndex &padre) const override
    {
        return !padre.isValid() && m_elenco.AltreDaCaricare();
    }
    void fetchMore(const QModelIndex &padre) override
    {
        if (padre.isValid())
            return;
        QList<RigaListaCli> righe = m_elenco.LeggiAltre();
        if (righe.isEmpty())
            return;
        const int prima = rowCount();
        beginInsertRows({}, prima, prima + int(righe.size()) - 1);
        m_elenco.Accogli(std::move(righe));
        endInsertRows();
    }

private:
    ElencoClienti &m_elenco;
};

CondivisiListaCli &condivisiListaCli()
{
    static CondivisiListaCli c;
    return c;
}

ListaCli::ListaCli(QWidget *parent) : QDialog(parent)
{
    setObjectName(QStringLiteral("ListaCli"));
    setWindowTitle(QStringLiteral("Elenco Clienti"));
    setModal(true);

    Picture1 = new QWidget(this);
    Picture1->setObjectName(QStringLiteral("Picture1"));
    Picture1->setAutoFillBackground(true);

    Label1 = new QLabel(Picture1);
    Label1->setObjectName(QStringLiteral("Label1"));
    QFont grassetto = Label1->font();
    grassetto.setBold(true);
    Label1->setFont(grassetto);

    m_modello = new ModelloListaCli(m_elenco, this);
    Grid1 = new QTableView(Picture1);
    Grid1->setObjectName(QStringLiteral("Grid1"));
    Grid1->setAccessibleName(QStringLiteral("Clienti trovati"));
    Grid1->setModel(m_modello);
    Grid1->setSelectionBehavior(QAbstractItemView::SelectRows);
    Grid1->setSelectionMode(QAbstractItemView::SingleSelection);
    Grid1->setEditTriggers(QAbstractItemView::NoEditTriggers);
    Grid1->setAlternatingRowColors(true);
    Grid1->setWordWrap(false);
    Grid1->setCornerButtonEnabled(false);
    Grid1->verticalHeader()->hide();
    QHeaderView *intestazione = Grid1->horizontalHeader();
    intestazione->setHighlightSections(false);
    intestazione->setSectionsMovable(false);
    intestazione->setSortIndicatorShown(true);
    intestazione->setSortIndicator(m_elenco.ColonnaOrdine, Qt::AscendingOrder);
    // Every row as high as the heading, so that the fitting's arithmetic on
    // the heading's height holds for the whole grid.
    const int altezzaRiga = intestazione->sizeHint().height();
    Grid1->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    Grid1->verticalHeader()->setDefaultSectionSize(altezzaRiga);
    intestazione->viewport()->installEventFilter(this);
    Grid1->installEventFilter(this);
    connect(Grid1, &QAbstractItemView::doubleClicked, this, [this] { DatiDaListacli(); });
    connect(Grid1->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this] { cellaCambiata(); });

    Command1 = new QPushButton(QStringLiteral("&USCITA"), Picture1);
    Command1->setObjectName(QStringLiteral("Command1"));
    Command1->setAutoDefault(false);
    Command1->setDefault(false);
    connect(Command1, &QPushButton::clicked, this, [this] { Command1_Click(); });

    Check1 = new QCheckBox(QStringLiteral("Anche chiusi"), Picture1);
    Check1->setObjectName(QStringLiteral("Check1"));
    Trovati = new QLabel(Picture1);
    Trovati->setObjectName(QStringLiteral("Trovati"));
    Trovati->setAccessibleName(QStringLiteral("Clienti trovati"));
    connect(Check1, &QCheckBox::toggled, this, [this] { Check1_Click(); });

    // The design size, until the first fitting.
    resize(InPixel(LarghezzaMinima), InPixel(4000));
    disponi(4000 - 100);
}

ListaCli::~ListaCli() = default;

void ListaCli::setPlPosX(float x) { m_plPosX = std::int32_t(std::lrint(x)); }
void ListaCli::setPlPosY(float y) { m_plPosY = std::int32_t(std::lrint(y)); }

void ListaCli::CercaNomi(const QString &Nome, std::int16_t &Quanti)
{
    Quanti = CercaNomi(Nome);
}

std::int16_t ListaCli::CercaNomi(const QString &Nome)
{
    if (Nome.trimmed().isEmpty())
        return 0;
    CursoreAttesa();
    m_elenco.AncheChiusi = Check1->isChecked();
    m_modello->inizia();
    const std::int32_t trovati = m_elenco.CercaNomi(Nome);
    m_modello->finisci();
    Trovati->setText(trovati > 1 ? QStringLiteral("%L1 clienti").arg(trovati) : QString());
    CursoreNormale();
    return ElencoClienti::Quanti(trovati);
}

void ListaCli::DatiDaListacli()
{
    if (m_modello->rowCount() < 1)
        return;
    m_occupato = 1;
    const int riga = std::max(Grid1->currentIndex().row(), 0);
    Grid1->setCurrentIndex(m_modello->index(riga, ColCodice));
    const std::int32_t codice = m_elenco.CodiceRiga(riga);
    if (codice != 0) {
        Cli().Codice = codice;
        if (codice != CodiceNonCaricato)
            CaricaCliente(codice);
    }
    m_occupato = 0;
    if (codice != 0)
        done(QDialog::Accepted);
}

void ListaCli::Command1_Click()
{
    BufferCliente &b = Cli();
    b.Codice = 0;
    b.Ragsoc.clear();
    b.RagsocEstesa.clear();
    b.Indirizzo = QString(35, QLatin1Char(' '));
    b.Localita = QString(35, QLatin1Char(' '));
    b.Nominativo.clear();
    tastiera().TastoAltPremuto = false;
    done(QDialog::Rejected);
}

void ListaCli::reject()
{
    // Escape and the window's close button leave as "&USCITA" does.
    Command1_Click();
}

void ListaCli::Check1_Click()
{
    if (condivisiListaCli().LookupLive) {
        CercaNomi(m_elenco.UltimaRicerca);
        AdattaFinestra();
    }
    condivisiListaCli().LookupLive = 1;
}

void ListaCli::OrdinaPerColonna(int colonna, Qt::MouseButton pulsante)
{
    const std::uint8_t verso = VersoDaPulsante(pulsante);
    if (colonna <= ColCodice || colonna >= NumeroColonneListaCli)
        return;
    if (colonna == m_colonnaPrecedente && verso == m_versoPrecedente)
        return;
    m_colonnaPrecedente = std::uint8_t(colonna);
    m_versoPrecedente = verso;
    m_elenco.ColonnaOrdine = std::uint8_t(colonna);
    m_elenco.VersoOrdine = verso;
    Grid1->horizontalHeader()->setSortIndicator(
        colonna, verso == VersoCrescente ? Qt::AscendingOrder : Qt::DescendingOrder);
    CercaNomi(m_elenco.UltimaRicerca);
    AdattaFinestra();
}

void ListaCli::cellaCambiata()
{
    // The selection always sits on the code, which is what a choice reads.
    const QModelIndex attuale = Grid1->currentIndex();
    if (!isVisible() || m_occupato || !attuale.isValid() || attuale.column() == ColCodice)
        return;
    Grid1->setCurrentIndex(m_modello->index(attuale.row(), ColCodice));
}

void ListaCli::AdattaFinestra()
{
    const int schermoL = LarghezzaUtile();
    const int schermoA = AltezzaUtile();
    const int altezzaEtichetta =
        Label1->text().isEmpty() ? 0 : Twips(Label1->sizeHint().height());
    const int righe = std::min(m_modello->rowCount() + 1, RigheVisibili);
    const int altezzaRiga = Twips(Grid1->horizontalHeader()->sizeHint().height());
    const int altezzaGriglia = righe * (altezzaRiga + LineaGriglia) + 40;
    int h = altezzaGriglia + altezzaEtichetta + Twips(Command1->sizeHint().height()) + 50;
    if (h >= schermoA - m_plPosY)
        h = schermoA - m_plPosY - 140;
    const int larghezza = std::max(LarghezzaMinima, schermoL - 30);
    int sinistra = m_plPosX;
    if (sinistra + larghezza > schermoL)
        sinistra = schermoL - larghezza - 30;
    resize(InPixel(larghezza), InPixel(h + 100));
    move(InPixel(sinistra), InPixel(m_plPosY));
    disponi(h);
}

void ListaCli::disponi(int h)
{
    const int larghezza = Twips(width());
    const int altezzaPulsante = Twips(Command1->sizeHint().height());
    const int larghezzaPulsante =
        std::max(LarghezzaPulsante, Twips(Command1->sizeHint().width()));
    const int altezzaEtichetta =
        Label1->text().isEmpty() ? 0 : Twips(Label1->sizeHint().height());
    const int margine = 40;
    const int altezzaGriglia = std::max(h - altezzaEtichetta - altezzaPulsante - 20, 0);
    const int rigaPulsante = h - altezzaPulsante + 20;

    Picture1->setGeometry(rect());
    Label1->setGeometry(InPixel(margine), 0, InPixel(larghezza - 2 * margine),
                        InPixel(altezzaEtichetta));
    Grid1->setGeometry(InPixel(margine), InPixel(altezzaEtichetta + 10),
                       InPixel(larghezza - 2 * margine), InPixel(altezzaGriglia));
    Command1->setGeometry(InPixel(larghezza - 100 - larghezzaPulsante), InPixel(rigaPulsante),
                          InPixel(larghezzaPulsante), InPixel(altezzaPulsante));
    const QSize casella = Check1->sizeHint();
    Check1->setGeometry(InPixel(margine), InPixel(rigaPulsante + 60), casella.width(),
                        casella.height());
    // How many matched, beside the check box.
    Trovati->setGeometry(Check1->geometry().right() + InPixel(400), Check1->y(),
                         std::max(Trovati->sizeHint().width(), InPixel(2000)),
                         casella.height());
    larghezzeColonne(Grid1->width());
}

void ListaCli::larghezzeColonne(int larghezzaPixel)
{
    // The design's widths, widened where a heading with its sort mark would
    // not fit in the program's font; the two address columns give back what
    // the grid then lacks.
    QHeaderView *intestazione = Grid1->horizontalHeader();
    const QFontMetrics fm(intestazione->font());
    QStyle *stile = intestazione->style();
    const int extra = 2 * stile->pixelMetric(QStyle::PM_HeaderMargin, nullptr, intestazione)
                      + stile->pixelMetric(QStyle::PM_HeaderMarkSize, nullptr, intestazione)
                      + 6;
    int larghezze[NumeroColonneListaCli];
    int totale = 0;
    for (int c = 0; c < NumeroColonneListaCli; ++c) {
        const int minima =
            fm.horizontalAdvance(QString::fromUtf8(Colonne[c].titolo)) + extra;
        larghezze[c] = std::max(InPixel(Colonne[c].larghezza), minima);
        totale += larghezze[c];
    }
    const int barra = stile->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, Grid1);
    const int disponibile = larghezzaPixel - 2 * Grid1->frameWidth() - barra;
    const int mancante = totale - disponibile;
    if (mancante > 0) {
        const int meta = (mancante + 1) / 2;
        larghezze[ColIndirizzo] = std::max(larghezze[ColIndirizzo] - meta, 80);
        larghezze[ColLocalita] = std::max(larghezze[ColLocalita] - meta, 80);
    }
    for (int c = 0; c < NumeroColonneListaCli; ++c)
        Grid1->setColumnWidth(c, larghezze[c]);
}

int ListaCli::colonnaDaPosizione(int x) const
{
    // The column before the first whose left edge lies right of the click;
    // past the last left edge, the last column.
    const QHeaderView *intestazione = Grid1->horizontalHeader();
    for (int c = 1; c < NumeroColonneListaCli; ++c) {
        if (intestazione->sectionViewportPosition(c) > x)
            return c - 1;
    }
    return NumeroColonneListaCli - 1;
}

void ListaCli::showEvent(QShowEvent *evento)
{
    QDialog::showEvent(evento);
    m_colonnaPrecedente = 0;
    m_versoPrecedente = 0;
    AdattaFinestra();
    Grid1->setFocus();
    Grid1->setCurrentIndex(m_modello->index(0, ColNominativo));
    condivisiListaCli().LookupLive = 1;
}

void ListaCli::hideEvent(QHideEvent *evento)
{
    m_colonnaPrecedente = 0;
    m_versoPrecedente = 0;
    Label1->clear();
    QDialog::hideEvent(evento);
}

void ListaCli::resizeEvent(QResizeEvent *evento)
{
    QDialog::resizeEvent(evento);
    disponi(Twips(height()) - 100);
}

void ListaCli::keyPressEvent(QKeyEvent *evento)
{
    if (TastiComuni(CodiceTasto(evento->key()), MascheraModificatori(evento->modifiers()),
                    this))
        return;
    QDialog::keyPressEvent(evento);
}

bool ListaCli::eventFilter(QObject *oggetto, QEvent *evento)
{
    if (oggetto == Grid1->horizontalHeader()->viewport()
        && (evento->type() == QEvent::MouseButtonPress
            || evento->type() == QEvent::MouseButtonDblClick)) {
        // The heading sorts through the search, never by itself.
        auto *mouse = static_cast<QMouseEvent *>(evento);
        if (evento->type() == QEvent::MouseButtonPress)
            OrdinaPerColonna(colonnaDaPosizione(int(mouse->position().x())), mouse->button());
        return true;
    }
    if (oggetto == Grid1 && evento->type() == QEvent::KeyPress) {
        auto *tasto = static_cast<QKeyEvent *>(evento);
        if (tasto->key() == Qt::Key_Return || tasto->key() == Qt::Key_Enter) {
            DatiDaListacli();
            return true;
        }
        if (TastiComuni(CodiceTasto(tasto->key()), MascheraModificatori(tasto->modifiers()),
                        this))
            return true;
    }
    return QDialog::eventFilter(oggetto, evento);
}

namespace {

QPointer<ListaCli> &Unica()
{
    static QPointer<ListaCli> lista;
    return lista;
}

void Distruggi()
{
    delete Unica().data();
}

} // namespace

ListaCli &listaCli()
{
    if (!Unica()) {
        static bool registrata = false;
        if (!registrata) {
            // Gone with the application, before the window system.
            qAddPostRoutine(Distruggi);
            registrata = true;
        }
        Unica() = new ListaCli;
    }
    return *Unica();
}

void CaricaListaCli()
{
    listaCli().Label1->clear();
}

void ScaricaListaCli()
{
    Distruggi();
}

} // namespace sorvane
