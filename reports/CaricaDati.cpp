#include "reports/CaricaDati.h"

#include "store/Schema.h"
#include "store/Transazione.h"
#include "store/Motore.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>

namespace sorvane {

namespace {

// Every column by its name as the table is made (an engine may give the
// names back in another case); Null stays Null, so that the template prints
// nothing for it.
QVariantMap Riga(const QSqlRecord &r, const QStringList &nomi)
{
    QVariantMap m;
    for (int i = 0; i < nomi.size(); ++i)
        m.insert(nomi.at(i), r.value(i));
    return m;
}

bool Leggi(const QSqlDatabase &db, const QString &tabella, QList<QVariantMap> &righe,
           QString *errore)
{
    QStringList nomi;
    for (const Colonna &c : TrovaTabella(tabella)->colonne)
        nomi.append(c.nome);
    // The staging tables have no key: their rows come back in the order
    // they were added, which is the order of the print.
    QSqlQuery q(db);
    LetturaInAvanti(q);
    if (!q.exec(QStringLiteral("SELECT %1 FROM %2 ORDER BY rowid")
                    .arg(nomi.join(QStringLiteral(", ")), tabella))) {
        if (errore)
            *errore = TestoErroreSqlite(q.lastError());
        return false;
    }
    while (q.next())
        righe.append(Riga(q.record(), nomi));
    return true;
}

} // namespace

bool CaricaDatiReport(const QSqlDatabase &db, DatiReport &dati, QString *errore)
{
    QList<QVariantMap> testa, piede;
    dati.corpo.clear();
    if (!Leggi(db, QStringLiteral("PrtTesta"), testa, errore)
        || !Leggi(db, QStringLiteral("PrtCorpo"), dati.corpo, errore)
        || !Leggi(db, QStringLiteral("PrtPiede"), piede, errore))
        return false;
    dati.testa = testa.value(0);
    dati.piede = piede.value(0);
    return true;
}

} // namespace sorvane
