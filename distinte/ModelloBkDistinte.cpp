#include "distinte/ModelloBkDistinte.h"

#include "distinte/Gestione.h"
#include "distinte/Movimento.h"
#include "frame/core/Giorni.h"
#include "frame/core/Valore.h"
#include "store/Connessione.h"
#include "store/Transazione.h"

#include <QBrush>
#include <QColor>
#include <QLocale>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>

namespace sorvane {

namespace {

// The grid's fields, one per grid column, with the two joined tables' names.
const QString Campi = QStringLiteral(
    "SELECT BkDistinte.dstCodice, BkDistinte.dstPrg, BkDistinte.dstData, BkDistinte.dstDitta,"
    " CliRagsoc, BkDistinte.dstCodP0, BkDistinte.dstCodP1, BkDistinte.dstCodP2,"
    " BkDistinte.dstCodP3, BkDistinte.dstCodP4, Descrizione, BkDistinte.dstMoneta,"
    " BkDistinte.dstImporto, BkDistinte.dstAssegno, BkDistinte.dstBanca,"
    " BkDistinte.dstSpeseUT");
const QString Origine = QStringLiteral(
    " FROM (Clienti INNER JOIN BkDistinte ON Clienti.CliCodice = BkDistinte.dstCliente)"
    " INNER JOIN DistCausali ON BkDistinte.dstCausale = DistCausali.Codice");

const char *const Titoli[ColonneBk] = {"PRG",   "",        "DATA",  "DITTA",   "NOMINATIVO",
                                       "COD.",  "COD.",    "COD.",  "COD.",    "COD.",
                                       "CAUSALE", "MON",   "IMPORTO", "ASSEGNO", "BANCA",
                                       "Spese UT"};

bool ColonnaTestata(int colonna)
{
    return (colonna >= ColData && colonna <= ColNominativo) || colonna == ColCausale
           || (colonna >= ColImporto && colonna <= ColSpese);
}

// "Standard": thousands grouped, two decimals.
QString Standard(double valore)
{
    return QLocale().toString(valore, 'f', 2);
}

} // namespace

QString QueryGrigliaBk()
{
    return Campi + Origine + QStringLiteral(" ORDER BY dstCodice, dstPrg");
}

QString QueryOrdinataBk(int colonna, bool discendente)
{
    QString campo;
    switch (colonna) {
    case ColData: campo = QStringLiteral("dstData"); break;
    case ColDitta: campo = QStringLiteral("dstDitta"); break;
    case ColNominativo: campo = QStringLiteral("CliRagsoc"); break;
    case ColCausale: campo = QStringLiteral("Descrizione"); break;
    case ColImporto: campo = QStringLiteral("dstImporto"); break;
    case ColAssegno: campo = QStringLiteral("dstAssegno"); break;
    case ColBanca: campo = QStringLiteral("dstBanca"); break;
    case ColSpese: campo = QStringLiteral("dstSpeseUT"); break;
    default: return {};
    }
    return Campi + Origine + OrdinePer(campo, discendente);
}

ModelloBkDistinte::ModelloBkDistinte(QObject *padre) : QSqlQueryModel(padre) {}

bool ModelloBkDistinte::Carica(const QString &query, QString *errore)
{
    m_query = query;
    setQuery(QSqlQuery(query, DbLavoro()));
    if (lastError().isValid()) {
        if (errore)
            *errore = TestoErroreSqlite(lastError());
        return false;
    }
    return true;
}

void ModelloBkDistinte::Aggiorna()
{
    // A failing refresh leaves the grid as it stands; the routine goes on.
    Carica(m_query);
    while (canFetchMore())
        fetchMore();
}

int ModelloBkDistinte::columnCount(const QModelIndex &padre) const
{
    // The columns stand while the grid lets go of its rows (a save that
    // fails halfway, a query that fails), so that their widths stay.
    return padre.isValid() ? 0 : int(ColonneBk);
}

bool ModelloBkDistinte::secondaRiga(int riga) const
{
    return QSqlQueryModel::data(index(riga, ColRiga)).toString().trimmed() != RigaPrincipale;
}

QVariant ModelloBkDistinte::data(const QModelIndex &indice, int ruolo) const
{
    if (!indice.isValid())
        return {};
    const int colonna = indice.column();
    if (ruolo == Qt::ForegroundRole) {
        if (ColonnaTestata(colonna) && secondaRiga(indice.row()))
            return QBrush(QColor(0xFF, 0xFF, 0xFF));
        return {};
    }
    if (ruolo == Qt::TextAlignmentRole) {
        if (colonna == ColPrg || colonna == ColImporto || colonna == ColSpese)
            return int(Qt::AlignRight | Qt::AlignVCenter);
        if (colonna == ColData || colonna == ColRiga || colonna == ColMoneta)
            return int(Qt::AlignCenter);
        return int(Qt::AlignLeft | Qt::AlignVCenter);
    }
    const QVariant valore = QSqlQueryModel::data(indice, Qt::DisplayRole);
    if (ruolo != Qt::DisplayRole)
        return ruolo == Qt::EditRole ? valore : QSqlQueryModel::data(indice, ruolo);
    switch (colonna) {
    case ColData: {
        const double giorno = CDbl(valore);
        if (giorno <= 0)
            return QString();
        return DataDaGiorno(giorno).toString(QStringLiteral("dd/MM/yyyy"));
    }
    case ColImporto:
        return Standard(CDbl(valore));
    case ColSpese: {
        const double spese = CDbl(valore);
        return spese != 0 ? Standard(spese) : QString();
    }
    default:
        return valore.toString().trimmed();
    }
}

QVariant ModelloBkDistinte::headerData(int sezione, Qt::Orientation verso, int ruolo) const
{
    if (verso == Qt::Horizontal && sezione >= 0 && sezione < ColonneBk) {
        if (ruolo == Qt::DisplayRole)
            return QString::fromLatin1(Titoli[sezione]);
        if (ruolo == Qt::UserRole)
            return record().fieldName(sezione);
    }
    return QSqlQueryModel::headerData(sezione, verso, ruolo);
}

} // namespace sorvane
