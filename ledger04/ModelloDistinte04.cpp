#include "ledger04/ModelloDistinte04.h"

#include "frame/core/Formato.h"
#include "frame/core/Giorni.h"
#include "frame/core/Valore.h"
#include "distinte/SchermiDistinte.h"
#include "ledger04/Distinte04.h"
#include "store/Connessione.h"

#include <QSqlQuery>
#include <QStyledItemDelegate>
#include <QTableView>

namespace sorvane {

namespace {

const char *const Titoli[ColonneLista04] = {"PRG",     "DATA", "NOMINATIVO", "OPERAZIONE",
                                            "CAUSALE", "MON",  "IMPORTO"};

// The operations' widest texts: a product code, the longest typed ones.
QStringList OperazioniPiuLunghe()
{
    QStringList testi{QString(15, QLatin1Char('N'))};
    QSqlQuery q(DbDati());
    // The typed rows only: few, and found by their numbers.
    if (!q.exec(QStringLiteral("SELECT TRIM(dstCodP) FROM Distinte04 WHERE dstCodice > 800000000"
                               " ORDER BY LENGTH(TRIM(dstCodP)) DESC LIMIT 12")))
        return testi;
    while (q.next())
        testi.append(q.value(0).toString());
    return testi;
}

} // namespace

int ModelloDistinte04::columnCount(const QModelIndex &padre) const
{
    return padre.isValid() ? 0 : int(ColonneLista04);
}

QVariant ModelloDistinte04::data(const QModelIndex &indice, int ruolo) const
{
    if (!indice.isValid())
        return {};
    const int colonna = indice.column();
    if (ruolo == Qt::TextAlignmentRole) {
        if (colonna == Lista04Prg || colonna == Lista04Importo)
            return int(Qt::AlignRight | Qt::AlignVCenter);
        if (colonna == Lista04Data || colonna == Lista04Moneta)
            return int(Qt::AlignCenter);
        return int(Qt::AlignLeft | Qt::AlignVCenter);
    }
    if (ruolo != Qt::DisplayRole)
        return ruolo == Qt::ForegroundRole ? QVariant() : QSqlQueryModel::data(indice, ruolo);
    const QVariant valore = QSqlQueryModel::data(indice, Qt::DisplayRole);
    switch (colonna) {
    case Lista04Prg:
        return NumeroMostrato04(valore.toInt());
    case Lista04Data: {
        const double giorno = CDbl(valore);
        return giorno > 0 ? DataDaGiorno(giorno).toString(QStringLiteral("dd/MM/yyyy"))
                          : QString();
    }
    case Lista04Importo:
        return Format(CDbl(valore), QStringLiteral("Standard"));
    default:
        return valore.toString().trimmed();
    }
}

QVariant ModelloDistinte04::headerData(int sezione, Qt::Orientation verso, int ruolo) const
{
    if (verso == Qt::Horizontal && ruolo == Qt::DisplayRole && sezione >= 0
        && sezione < ColonneLista04)
        return QString::fromLatin1(Titoli[sezione]);
    return QSqlQueryModel::headerData(sezione, verso, ruolo);
}

QTableView *GrigliaDistinte04(ModelloDistinte04 *modello, const QString &nomeAccessibile,
                              QWidget *padre, QObject *osservatore)
{
    auto *griglia = new QTableView(padre);
    griglia->setObjectName(QStringLiteral("TDBGrid1"));
    griglia->setAccessibleName(nomeAccessibile);
    griglia->setModel(modello);
    PreparaGrigliaDistinte(griglia, new QStyledItemDelegate(griglia), osservatore);
    LarghezzeDiApertura(griglia, {{QString::fromLatin1(Titoli[Lista04Operazione]),
                                   OperazioniPiuLunghe()}});
    return griglia;
}

} // namespace sorvane
