#include "distinte/ModelloDistinte.h"

#include "distinte/Movimento.h"
#include "frame/core/Campi.h"
#include "frame/core/Formato.h"
#include "frame/core/Giorni.h"
#include "frame/core/Valore.h"
#include "store/Connessione.h"
#include "store/Transazione.h"

#include <QBrush>
#include <QColor>
#include <QSqlError>
#include <QSqlQuery>

namespace sorvane {

namespace {

const char *const Titoli[ColonneGestione] = {
    "PRG",  "T",       "DATA", "NOMINATIVO", "COD.",    "COD.",  "COD.",   "COD.",
    "COD.", "CAUSALE", "MON",  "IMPORTO",    "ASSEGNO", "BANCA", "Chiusa", "Spese UT"};

const QColor Rosso(0xFF, 0x00, 0x00);
const QColor Blu(0x00, 0x00, 0xFF);
const QColor Bianco(0xFF, 0xFF, 0xFF);
const QColor Nero(0x00, 0x00, 0x00);

bool ColonnaCodice(int colonna)
{
    return colonna >= GesPrimoCodice && colonna <= GesUltimoCodice;
}

// The header cells that a second row hides and a closed movement paints blue.
bool ColonnaTestata(int colonna)
{
    switch (colonna) {
    case GesData:
    case GesNominativo:
    case GesCausale:
    case GesImporto:
    case GesAssegno:
    case GesBanca:
    case GesSpese:
        return true;
    default:
        return false;
    }
}

} // namespace

void DelegatoDistinte::initStyleOption(QStyleOptionViewItem *opzione,
                                       const QModelIndex &indice) const
{
    QStyledItemDelegate::initStyleOption(opzione, indice);
    const QVariant colore = indice.data(Qt::ForegroundRole);
    if (!colore.isValid())
        return;
    const QColor c = colore.value<QBrush>().color();
    // A hidden cell takes the selection's own colour; a coloured one keeps it.
    if (c == Bianco)
        opzione->palette.setBrush(QPalette::HighlightedText,
                                  opzione->palette.brush(QPalette::Highlight));
    else
        opzione->palette.setColor(QPalette::HighlightedText, c);
}

ModelloDistinte::ModelloDistinte(QObject *padre) : QSqlQueryModel(padre) {}

bool ModelloDistinte::Carica(const QString &query, const QVariantList &parametri,
                             QString *errore)
{
    m_query = query;
    m_parametri = parametri;
    QSqlQuery q(Db());
    bool riuscita = q.prepare(query);
    for (const QVariant &valore : parametri)
        q.addBindValue(valore);
    riuscita = riuscita && q.exec();
    if (!riuscita) {
        if (errore)
            *errore = TestoErroreSqlite(q.lastError());
        clear();
        return false;
    }
    setQuery(std::move(q));
    return !lastError().isValid();
}

QSqlDatabase ModelloDistinte::DatabaseSql() const { return Db(); }

void ModelloDistinte::Aggiorna(int righe)
{
    if (m_query.isEmpty())
        return;
    // A refresh that fails leaves an empty list; the screen goes on.
    Carica(m_query, m_parametri);
    CaricaFinoA(righe - 1);
}

void ModelloDistinte::CaricaFinoA(int riga)
{
    while (rowCount() <= riga && canFetchMore())
        fetchMore();
}

QString ModelloDistinte::grezzo(int riga, int colonna) const
{
    return QSqlQueryModel::data(index(riga, colonna), Qt::DisplayRole).toString();
}

std::int32_t ModelloDistinte::Codice(int riga) const
{
    return QSqlQueryModel::data(index(riga, GesPrg), Qt::DisplayRole).toInt();
}

QString ModelloDistinte::Prg(int riga) const { return grezzo(riga, GesRiga).trimmed(); }

int ModelloDistinte::columnCount(const QModelIndex &padre) const
{
    // The headings stand before the first extraction as well.
    return padre.isValid() ? 0 : int(ColonneGestione);
}

QVariant ModelloDistinte::colore(int riga, int colonna) const
{
    if (ColonnaCodice(colonna))
        return HaMarca(grezzo(riga, colonna)) ? QVariant(QBrush(Rosso)) : QVariant();
    if (!ColonnaTestata(colonna))
        return {};
    if (Prg(riga) != RigaPrincipale)
        return QBrush(Bianco);
    const QString chiusa = TestoDaCampo(QSqlQueryModel::data(index(riga, GesChiusa)));
    return QBrush(chiusa > QStringLiteral(" ") ? Blu : Nero);
}

QVariant ModelloDistinte::data(const QModelIndex &indice, int ruolo) const
{
    if (!indice.isValid())
        return {};
    const int colonna = indice.column();
    switch (ruolo) {
    case Qt::ForegroundRole:
        return colore(indice.row(), colonna);
    case Qt::TextAlignmentRole:
        if (colonna == GesPrg || colonna == GesImporto || colonna == GesSpese)
            return int(Qt::AlignRight | Qt::AlignVCenter);
        if (colonna == GesData || colonna == GesRiga || colonna == GesMoneta
            || colonna == GesChiusa)
            return int(Qt::AlignCenter);
        return int(Qt::AlignLeft | Qt::AlignVCenter);
    case Qt::DisplayRole:
        break;
    default:
        return QSqlQueryModel::data(indice, ruolo);
    }
    const QVariant valore = QSqlQueryModel::data(indice, Qt::DisplayRole);
    switch (colonna) {
    case GesData: {
        const double giorno = CDbl(valore);
        return giorno > 0 ? DataDaGiorno(giorno).toString(QStringLiteral("dd/MM/yyyy"))
                          : QString();
    }
    case GesImporto:
        return Format(CDbl(valore), QStringLiteral("Standard"));
    case GesSpese: {
        const double spese = CDbl(valore);
        return spese != 0 ? Format(spese, QStringLiteral("Standard")) : QString();
    }
    default:
        // A code shows bare: its mark is the colour.
        return ColonnaCodice(colonna) ? TagliaMarca(valore.toString()).trimmed()
                                      : valore.toString().trimmed();
    }
}

QVariant ModelloDistinte::headerData(int sezione, Qt::Orientation verso, int ruolo) const
{
    // The export names a column by the query's field, from the record.
    if (verso == Qt::Horizontal && ruolo == Qt::DisplayRole && sezione >= 0
        && sezione < ColonneGestione)
        return QString::fromLatin1(Titoli[sezione]);
    return QSqlQueryModel::headerData(sezione, verso, ruolo);
}

} // namespace sorvane
