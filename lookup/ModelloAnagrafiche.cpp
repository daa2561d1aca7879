#include "lookup/ModelloAnagrafiche.h"

#include "frame/core/Valore.h"
#include "lookup/RicercaAnagrafiche.h"
#include "store/Connessione.h"

#include <QSqlError>
#include <QSqlQuery>

#include <cmath>

namespace sorvane {

ModelloAnagrafiche::ModelloAnagrafiche(QObject *padre) : QSqlQueryModel(padre) {}

bool ModelloAnagrafiche::Carica(const SqlRicerca &sql)
{
    QSqlQuery q(Db());
    bool riuscita = q.prepare(sql.testo);
    for (const QVariant &valore : sql.parametri)
        q.addBindValue(valore);
    riuscita = riuscita && q.exec();
    if (!riuscita) {
        clear();
        return false;
    }
    setQuery(std::move(q));
    if (lastError().isValid()) {
        clear();
        return false;
    }
    return true;
}

void ModelloAnagrafiche::Svuota() { clear(); }

void ModelloAnagrafiche::CaricaFinoA(int riga)
{
    while (rowCount() <= riga && canFetchMore())
        fetchMore();
}

std::int32_t ModelloAnagrafiche::Codice(int riga) const
{
    if (riga < 0 || riga >= rowCount())
        return 0;
    return std::int32_t(CDbl(QSqlQueryModel::data(index(riga, AnaCodice))));
}

int ModelloAnagrafiche::columnCount(const QModelIndex &padre) const
{
    // The headings stand before the first search as well.
    return padre.isValid() ? 0 : int(NumeroColonneAnagrafica);
}

QVariant ModelloAnagrafiche::data(const QModelIndex &indice, int ruolo) const
{
    if (!indice.isValid() || indice.row() >= rowCount())
        return {};
    if (ruolo != Qt::DisplayRole && ruolo != Qt::EditRole)
        return {};
    const QVariant v = QSqlQueryModel::data(indice, Qt::DisplayRole);
    if (indice.column() > AnaGruppo)
        return v.isNull() ? QString() : v.toString();
    // "#": a whole number, nothing for zero or a blank.
    const double n = std::round(CDbl(v));
    return n == 0 ? QString() : QString::number(n, 'f', 0);
}

QVariant ModelloAnagrafiche::headerData(int sezione, Qt::Orientation verso, int ruolo) const
{
    if (verso != Qt::Horizontal)
        return QSqlQueryModel::headerData(sezione, verso, ruolo);
    if (ruolo == Qt::DisplayRole)
        return TitoloColonna(sezione);
    if (ruolo == Qt::UserRole)
        return CampoColonna(sezione);
    return {};
}

} // namespace sorvane
