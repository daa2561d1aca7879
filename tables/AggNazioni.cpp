#include "tables/AggNazioni.h"

#include "frame/ui/Modale.h"
#include "tables/SchermoTabella.h"

#include <QCloseEvent>
#include <QTimer>
#include <QVBoxLayout>

namespace sorvane {

namespace {

// The grid of the small tables inside a modal window: closing it ends this
// window, not the program, as a screen of the menu does.
class GrigliaNazioni : public SchermoTabella
{
public:
    explicit GrigliaNazioni(QWidget *padre) : SchermoTabella(TabellaNazioni(), padre) {}

protected:
    void closeEvent(QCloseEvent *evento) override
    {
        // A row refused as the editor goes stays on it, to be corrected or
        // dropped with Esc.
        if (!guasto() && !AggiornaRiga()) {
            evento->ignore();
            return;
        }
        evento->accept();
        if (auto *finestra = qobject_cast<QDialog *>(window()))
            QTimer::singleShot(0, finestra, &QDialog::accept);
    }
};

} // namespace

const TabellaRiferimento &TabellaNazioni()
{
    static const TabellaRiferimento t = [] {
        TabellaRiferimento n;
        n.schermo = QStringLiteral("AggNazioni");
        n.titolo = QStringLiteral("GESTIONE VALUTE E NAZIONI");
        n.tabella = QStringLiteral("TabNazioni");
        n.ordine = QStringLiteral("Codice");
        n.sorgente = QStringLiteral("SELECT * FROM TabNazioni ORDER BY Codice");
        n.guasto = QStringLiteral("Errore in apertura tabella NAZIONI");
        n.sorgenteDati = QStringLiteral("DataNaz");
        n.colonne = {{QStringLiteral("COD."), QStringLiteral("Codice"), 3},
                     {QStringLiteral("DESCRIZIONE"), QStringLiteral("Descrizione"), 35},
                     {QStringLiteral("ISO"), QStringLiteral("CodiceISO"), 3},
                     {QStringLiteral("ISTAT"), QStringLiteral("CodiceISTAT"), 3},
                     {QStringLiteral("EURO S/N"), QStringLiteral("TipoNaz"), 1},
                     {QStringLiteral("POSTO CAMBI"), QStringLiteral("GesCmb"), 5}};
        n.tabNellaGriglia = true;
        return n;
    }();
    return t;
}

AggNazioni::AggNazioni(QWidget *padre) : QDialog(padre)
{
    setObjectName(QStringLiteral("AggNazioni"));
    setWindowTitle(TabellaNazioni().titolo);
    setWindowFlags(windowFlags() & ~Qt::WindowContextHelpButtonHint);
    m_tabella = new GrigliaNazioni(this);
    auto *righe = new QVBoxLayout(this);
    righe->setContentsMargins(0, 0, 0, 0);
    righe->addWidget(m_tabella);
    resize(720, 420);
}

QTableView *AggNazioni::griglia() const
{
    return m_tabella->TDBGrid2();
}

bool AggNazioni::guasto() const
{
    return m_tabella->guasto();
}

void AggNazioni::done(int esito)
{
    // The close box and Esc go through the grid's own leaving.
    if (m_tabella->isVisible() && !m_tabella->close())
        return;
    QDialog::done(esito);
}

int MostraAggNazioni(QWidget *padre)
{
    AggNazioni editore(padre);
    if (editore.guasto())
        return 0;
    return EseguiModale(editore);
}

} // namespace sorvane
