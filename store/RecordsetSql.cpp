#include "store/RecordsetSql.h"

#include "store/Motore.h"
#include "store/Schema.h"
#include "store/Transazione.h"

#include <QHash>

#include <QRegularExpression>
#include <QSqlError>
#include <QSqlQuery>

namespace sorvane::recordset {

namespace {

const QString Riga = QStringLiteral("rowid");

bool IsNullo(const QVariant &v)
{
    return !v.isValid() || v.isNull();
}

// The engine's rules for the kind of value a declared type holds.
Affinita AffinitaDi(const QString &tipo)
{
    const QString t = tipo.toUpper();
    if (t.contains(QLatin1String("INT")))
        return Affinita::Intero;
    if (t.contains(QLatin1String("CHAR")) || t.contains(QLatin1String("CLOB"))
        || t.contains(QLatin1String("TEXT")))
        return Affinita::Testo;
    if (t.contains(QLatin1String("REAL")) || t.contains(QLatin1String("FLOA"))
        || t.contains(QLatin1String("DOUB")))
        return Affinita::Reale;
    return Affinita::Numerica;
}

int LarghezzaDi(const QString &tipo)
{
    static const QRegularExpression re(QStringLiteral("\\(\\s*(\\d+)\\s*\\)"));
    const auto m = re.match(tipo);
    return m.hasMatch() ? m.captured(1).toInt() : 0;
}

// Names of the first two columns of a walk's rows; the table's own columns
// follow, so the names must not be any table's.
const QString ColonnaTratto = QStringLiteral("sorvane_tratto");
const QString ColonnaId = QStringLiteral("sorvane_riga");

QString Espressione(const ColonnaIndice &c)
{
    QString t = c.nome == Riga ? Riga : Identificatore(c.nome);
    if (!c.collazione.isEmpty())
        t += QStringLiteral(" COLLATE ") + c.collazione;
    return t;
}

// Rows whose first `quante` columns equal the key: "= ?", or "IS NULL" for a
// Null part of the key, so that the engine still searches the index.
void Uguali(const QList<ColonnaIndice> &colonne, const QVariantList &chiavi, int quante,
            QStringList *parti, QVariantList *valori)
{
    for (int i = 0; i < quante; ++i) {
        if (IsNullo(chiavi[i])) {
            *parti << Espressione(colonne[i]) + QStringLiteral(" IS NULL");
        } else {
            *parti << Espressione(colonne[i]) + QStringLiteral(" = ?");
            *valori << chiavi[i];
        }
    }
}

// ORDER BY text for the index columns and the row id, in or against the
// index's order. The files hold Null as the smallest value; the server is
// told so, and its indexes are made that way.
QString Ordine(const QList<ColonnaIndice> &indice, bool avanti, Motore m)
{
    const bool server = m == Motore::Postgres;
    QStringList parti;
    for (const ColonnaIndice &c : indice) {
        const bool crescente = avanti != c.discendente;
        QString t = Espressione(c) + (crescente ? QString() : QStringLiteral(" DESC"));
        if (server)
            t += crescente ? QStringLiteral(" NULLS FIRST") : QStringLiteral(" NULLS LAST");
        parti << t;
    }
    parti << Riga + (avanti ? QString() : QStringLiteral(" DESC"));
    return parti.join(QStringLiteral(", "));
}

// The server's types by their kind.
Affinita AffinitaServer(const QString &tipo)
{
    static const QHash<QString, Affinita> tipi{
        {QStringLiteral("citext"), Affinita::Testo},  {QStringLiteral("text"), Affinita::Testo},
        {QStringLiteral("varchar"), Affinita::Testo}, {QStringLiteral("bpchar"), Affinita::Testo},
        {QStringLiteral("int2"), Affinita::Intero},   {QStringLiteral("int4"), Affinita::Intero},
        {QStringLiteral("int8"), Affinita::Intero},   {QStringLiteral("bool"), Affinita::Intero},
        {QStringLiteral("float4"), Affinita::Reale},  {QStringLiteral("float8"), Affinita::Reale},
    };
    return tipi.value(tipo, Affinita::Numerica);
}

bool LeggiColonneServer(const QSqlDatabase &db, const QString &tabella,
                        QList<ColonnaTabella> *colonne, QString *errore)
{
    // The table the search path finds, as a query would; its own row id is
    // no field.
    QSqlQuery q(db);
    q.setForwardOnly(true);
    q.prepare(QStringLiteral("SELECT a.attname, t.typname FROM pg_attribute a"
                             " JOIN pg_type t ON t.oid = a.atttypid"
                             " WHERE a.attrelid = to_regclass(?) AND a.attnum > 0"
                             " AND NOT a.attisdropped AND a.attname <> 'rowid'"
                             " ORDER BY a.attnum"));
    q.addBindValue(NomeSql(tabella));
    if (!q.exec()) {
        *errore = TestoErroreSqlite(q.lastError());
        return false;
    }
    const Tabella *dizionario = TrovaTabella(tabella);
    while (q.next()) {
        const QString nome = NomeDelDizionario(q.value(0).toString());
        const Affinita affinita = AffinitaServer(q.value(1).toString());
        const Colonna *c = dizionario ? dizionario->colonna(nome) : nullptr;
        colonne->append({c ? c->nome : nome, affinita,
                         c && affinita == Affinita::Testo ? c->larghezza : 0});
    }
    return true;
}

// A table the dictionary does not know: its index called nome, or ending
// in "_" + nome, from the server's catalogue.
bool LeggiIndiceServer(const QSqlDatabase &db, const QString &tabella, const QString &nome,
                       QList<ColonnaIndice> *colonne)
{
    QSqlQuery q(db);
    q.setForwardOnly(true);
    q.prepare(QStringLiteral(
        "SELECT c.relname, a.attname, (i.indoption[k.n - 1] & 1) <> 0"
        " FROM pg_index i JOIN pg_class c ON c.oid = i.indexrelid"
        " CROSS JOIN LATERAL unnest(i.indkey) WITH ORDINALITY AS k(attnum, n)"
        " JOIN pg_attribute a ON a.attrelid = i.indrelid AND a.attnum = k.attnum"
        " WHERE i.indrelid = to_regclass(?) AND (c.relname = ? OR c.relname LIKE ?)"
        " ORDER BY c.relname = ? DESC, c.relname, k.n"));
    const QString n = nome.toLower();
    q.addBindValue(NomeSql(tabella));
    q.addBindValue(n);
    q.addBindValue(QStringLiteral("%\\_") + n);
    q.addBindValue(n);
    if (!q.exec())
        return false;
    QString trovato;
    while (q.next()) {
        if (trovato.isEmpty())
            trovato = q.value(0).toString();
        if (q.value(0).toString() != trovato)
            break;
        colonne->append({NomeDelDizionario(q.value(1).toString()), q.value(2).toBool(), {}});
    }
    return !colonne->isEmpty();
}

// The index columns the key speaks of; a key one longer than the index ends
// with the row id.
QList<ColonnaIndice> ColonneDellaChiave(const QList<ColonnaIndice> &indice, qsizetype n)
{
    QList<ColonnaIndice> colonne = indice.mid(0, n);
    if (n > indice.size())
        colonne << ColonnaIndice{Riga, false, {}};
    return colonne;
}

} // namespace

QString Identificatore(const QString &nome)
{
    return NomeSql(nome);
}

QString NomeDelDizionario(const QString &nome)
{
    static const QHash<QString, QString> nomi = [] {
        QHash<QString, QString> h;
        for (const Tabella &t : Tabelle())
            for (const Colonna &c : t.colonne)
                h.insert(c.nome.toLower(), c.nome);
        return h;
    }();
    return nomi.value(nome, nome);
}

QString ColonnaRiga()
{
    return Riga;
}

bool LeggiColonne(const QSqlDatabase &db, const QString &tabella,
                  QList<ColonnaTabella> *colonne, QString *errore)
{
    colonne->clear();
    if (SuServer(db)) {
        if (!LeggiColonneServer(db, tabella, colonne, errore))
            return false;
        if (colonne->isEmpty()) {
            *errore = QStringLiteral("Impossibile trovare la tabella '%1'.").arg(tabella);
            return false;
        }
        return true;
    }
    // Unqualified, the engine looks for the table where a query would find
    // it: temporary tables, the main file, then the attached ones in order.
    QSqlQuery q(db);
    if (!q.exec(QStringLiteral("PRAGMA table_info(%1)").arg(Identificatore(tabella)))) {
        *errore = TestoErroreSqlite(q.lastError());
        return false;
    }
    // The file's own declaration says what a column holds; the dictionary
    // says how wide its text may be.
    const Tabella *dizionario = TrovaTabella(tabella);
    while (q.next()) {
        const QString nome = q.value(1).toString();
        const QString tipo = q.value(2).toString();
        const Affinita affinita = AffinitaDi(tipo);
        int larghezza = affinita == Affinita::Testo ? LarghezzaDi(tipo) : 0;
        if (const Colonna *c = dizionario ? dizionario->colonna(nome) : nullptr;
            c && affinita == Affinita::Testo && c->larghezza > 0)
            larghezza = c->larghezza;
        colonne->append({nome, affinita, larghezza});
    }
    if (colonne->isEmpty()) {
        *errore = QStringLiteral("Impossibile trovare la tabella '%1'.").arg(tabella);
        return false;
    }
    return true;
}

bool LeggiIndice(const QSqlDatabase &db, const QString &tabella, const QString &nome,
                 QList<ColonnaIndice> *colonne)
{
    colonne->clear();
    if (nome.isEmpty())
        return false;
    if (const Tabella *t = TrovaTabella(tabella)) {
        if (const Indice *i = t->indice(nome)) {
            for (const QString &c : i->colonne)
                colonne->append({c, false, {}});
            return true;
        }
    }
    if (SuServer(db))
        return LeggiIndiceServer(db, tabella, nome, colonne);
    // A table the dictionary does not know: ask the file.
    QSqlQuery elenco(db);
    if (!elenco.exec(QStringLiteral("PRAGMA index_list(%1)").arg(Identificatore(tabella))))
        return false;
    QString trovato;
    while (elenco.next() && trovato.isEmpty()) {
        const QString indice = elenco.value(1).toString();
        if (indice.compare(nome, Qt::CaseInsensitive) == 0
            || indice.endsWith(QLatin1Char('_') + nome, Qt::CaseInsensitive))
            trovato = indice;
    }
    if (trovato.isEmpty())
        return false;
    QSqlQuery info(db);
    if (!info.exec(QStringLiteral("PRAGMA index_xinfo(%1)").arg(Identificatore(trovato))))
        return false;
    while (info.next()) {
        if (info.value(5).toInt() != 1) // the row id and other auxiliary columns
            continue;
        const QString coll = info.value(4).toString();
        colonne->append({info.value(2).toString(), info.value(3).toInt() != 0,
                         coll.compare(QLatin1String("BINARY"), Qt::CaseInsensitive) == 0
                             ? QString()
                             : coll});
    }
    return !colonne->isEmpty();
}

Tratto TrattoUguale(const QList<ColonnaIndice> &indice, const QVariantList &chiavi)
{
    const QList<ColonnaIndice> colonne = ColonneDellaChiave(indice, chiavi.size());
    QStringList parti;
    Tratto t;
    Uguali(colonne, chiavi, int(chiavi.size()), &parti, &t.valori);
    t.condizione = parti.join(QStringLiteral(" AND "));
    return t;
}

QList<Tratto> TrattiDa(const QList<ColonnaIndice> &indice, const QVariantList &chiavi,
                       bool avanti, bool incluso)
{
    const QList<ColonnaIndice> colonne = ColonneDellaChiave(indice, chiavi.size());
    QList<Tratto> tratti;
    if (incluso)
        tratti << TrattoUguale(indice, chiavi);
    // Deepest column first: rows that share more of the key lie nearer to it.
    for (int j = int(chiavi.size()) - 1; j >= 0; --j) {
        QStringList prefisso;
        QVariantList valori;
        Uguali(colonne, chiavi, j, &prefisso, &valori);
        const QString c = Espressione(colonne[j]);
        // Null is the smallest value, so it comes first when the engine reads
        // the column upward and last when it reads it downward.
        const bool crescente = avanti != colonne[j].discendente;
        auto aggiungi = [&](const QString &condizione, bool conValore) {
            Tratto t{(QStringList(prefisso) << condizione).join(QStringLiteral(" AND ")),
                     valori};
            if (conValore)
                t.valori << chiavi[j];
            tratti << t;
        };
        if (crescente) {
            if (IsNullo(chiavi[j]))
                aggiungi(c + QStringLiteral(" IS NOT NULL"), false);
            else
                aggiungi(c + QStringLiteral(" > ?"), true);
        } else if (!IsNullo(chiavi[j])) {
            aggiungi(c + QStringLiteral(" < ?"), true);
            aggiungi(c + QStringLiteral(" IS NULL"), false);
        }
    }
    return tratti;
}

Istruzione Percorso(const QString &tabella, const QList<ColonnaIndice> &indice,
                    const QList<Tratto> &tratti, bool avanti, qsizetype limite, Motore m)
{
    const QString ordine = Ordine(indice, avanti, m);
    auto parte = [&](qsizetype n, const Tratto &t, Istruzione *i) {
        i->valori += t.valori;
        i->valori << limite;
        return QStringLiteral("SELECT %1 AS %2, %3 AS %4, * FROM %5%6 ORDER BY %7 LIMIT ?")
            .arg(n)
            .arg(ColonnaTratto, Riga, ColonnaId, Identificatore(tabella),
                 t.condizione.isEmpty() ? QString() : QStringLiteral(" WHERE ") + t.condizione,
                 ordine);
    };
    Istruzione i;
    if (tratti.size() == 1) {
        i.sql = parte(0, tratti.first(), &i);
        return i;
    }
    // Each piece is an index search of its own, run as a co-routine; the
    // engine runs the arms of a UNION ALL one after the other and stops at
    // the limit, so no piece is read that the walk doesn't reach and
    // nothing is sorted. An ORDER BY over the whole would make the engine
    // sort every arm in a temporary tree, at many times the cost.
    QStringList parti;
    for (qsizetype n = 0; n < tratti.size(); ++n)
        parti << QStringLiteral("SELECT * FROM (%1) AS tratto%2").arg(parte(n, tratti[n], &i)).arg(n);
    i.sql = parti.join(QStringLiteral(" UNION ALL ")) + QStringLiteral(" LIMIT ?");
    i.valori << limite;
    return i;
}

Istruzione RigaDaId(const QString &tabella, qint64 id, Motore m)
{
    return Percorso(tabella, {}, {Tratto{Riga + QStringLiteral(" = ?"), {id}}}, true, 1, m);
}

} // namespace sorvane::recordset
