#include "tables/Categorie.h"

#include "frame/core/Valore.h"
#include "store/Connessione.h"
#include "store/Transazione.h"

#include <QSqlError>
#include <QSqlQuery>

namespace sorvane {

namespace {

// One row per code, written whole: a new code is added, a known one (in
// any case of its letters) takes every value given, the code's spelling too.
QString Scrivi(const QString &tabella, const QStringList &colonne, const QVariantList &valori,
               const QString &frase)
{
    QStringList segni, nuovi;
    for (const QString &c : colonne) {
        segni.append(QStringLiteral("?"));
        nuovi.append(c + QStringLiteral(" = excluded.") + c);
    }
    const QString sql = QStringLiteral("INSERT INTO %1 (%2) VALUES (%3) ON CONFLICT (%4) "
                                       "DO UPDATE SET %5")
                            .arg(tabella, colonne.join(QStringLiteral(", ")),
                                 segni.join(QStringLiteral(", ")), colonne.first(),
                                 nuovi.join(QStringLiteral(", ")));
    Transazione t;
    if (!t.attiva())
        return TestoGuasto(frase, t.errore());
    QSqlQuery q(Db());
    bool ok = q.prepare(sql);
    for (const QVariant &v : valori)
        q.addBindValue(v);
    if (!ok || !q.exec())
        return TestoGuasto(frase, TestoErroreSqlite(q.lastError()));
    return t.conferma() ? QString() : TestoGuasto(frase, t.errore());
}

} // namespace

std::optional<Categoria> LeggiCategoria(const QString &codice)
{
    QSqlQuery q(Db());
    q.prepare(QStringLiteral("SELECT Codice, Descrizione, Tipo, BuoniCattivi, Colore, Totale "
                             "FROM TabCategorie WHERE Codice = ?"));
    q.addBindValue(codice.trimmed());
    if (!q.exec() || !q.next())
        return std::nullopt;
    return Categoria{q.value(0).toString().trimmed(), q.value(1).toString().trimmed(),
                     q.value(2).toString().trimmed(), q.value(3).toString().trimmed(),
                     int(CDbl(q.value(4))), int(CDbl(q.value(5)))};
}

QString AggCateg(const Categoria &c)
{
    return Scrivi(QStringLiteral("TabCategorie"),
                  {QStringLiteral("Codice"), QStringLiteral("Descrizione"), QStringLiteral("Tipo"),
                   QStringLiteral("BuoniCattivi"), QStringLiteral("Colore"),
                   QStringLiteral("Totale")},
                  {c.Codice.trimmed(), c.Descrizione, c.Tipo, c.BuoniCattivi, c.Colore, c.Totale},
                  QStringLiteral("LA CATEGORIA %1 NON E' STATA REGISTRATA.").arg(c.Codice));
}

std::optional<QString> LeggiGruppo(const QString &codice)
{
    QSqlQuery q(Db());
    q.prepare(QStringLiteral("SELECT GrpDescrizione FROM TabGruppi WHERE GrpCodice = ?"));
    q.addBindValue(codice.trimmed());
    if (!q.exec() || !q.next())
        return std::nullopt;
    return q.value(0).toString().trimmed();
}

QString AggGruppi(const QString &codice, const QString &descrizione)
{
    return Scrivi(QStringLiteral("TabGruppi"),
                  {QStringLiteral("GrpCodice"), QStringLiteral("GrpDescrizione")}, {codice.trimmed(), descrizione},
                  QStringLiteral("IL GRUPPO %1 NON E' STATO REGISTRATO.").arg(codice));
}

} // namespace sorvane
