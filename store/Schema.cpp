#include "store/Schema.h"

#include "store/Motore.h"
#include "store/Transazione.h"

#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>

namespace sorvane {

QList<Tabella> CostruisciTabelle(); // SchemaTabelle.cpp

QString NomeSchema(Archivio a)
{
    switch (a) {
    case Archivio::Dati: return QStringLiteral("dati");
    case Archivio::Lavoro: return QStringLiteral("main");
    case Archivio::Visite: return QStringLiteral("visite");
    case Archivio::Indici: return QStringLiteral("indici");
    }
    return QString();
}

QString NomeFile(Archivio a)
{
    switch (a) {
    case Archivio::Dati: return QStringLiteral("DatiDV.db");
    case Archivio::Lavoro: return QStringLiteral("WorkDV.db");
    case Archivio::Visite: return QStringLiteral("VisiteDV.db");
    case Archivio::Indici: return QStringLiteral("IndiciDV.db");
    }
    return QString();
}

const Colonna *Tabella::colonna(const QString &n) const
{
    for (const Colonna &c : colonne)
        if (c.nome.compare(n, Qt::CaseInsensitive) == 0)
            return &c;
    return nullptr;
}

const Indice *Tabella::indice(const QString &n) const
{
    for (const Indice &i : indici)
        if (i.nome.compare(n, Qt::CaseInsensitive) == 0)
            return &i;
    return nullptr;
}

int Tabella::ordinale(const QString &n) const
{
    for (int i = 0; i < colonne.size(); ++i)
        if (colonne[i].nome.compare(n, Qt::CaseInsensitive) == 0)
            return i;
    return -1;
}

QString Tabella::tipoSql(const Colonna &c, Motore m)
{
    if (m == Motore::Postgres) {
        switch (c.tipo) {
        case Tipo::Testo:
        case Tipo::Memo: return QStringLiteral("citext COLLATE \"C\"");
        case Tipo::Intero: return QStringLiteral("bigint");
        case Tipo::Reale:
        case Tipo::Data: return QStringLiteral("double precision");
        }
    }
    switch (c.tipo) {
    case Tipo::Testo:
    case Tipo::Memo: return QStringLiteral("TEXT COLLATE NOCASE");
    case Tipo::Intero: return QStringLiteral("INTEGER");
    case Tipo::Reale:
    case Tipo::Data: return QStringLiteral("REAL");
    }
    return QString();
}

const QList<Tabella> &Tabelle()
{
    static const QList<Tabella> tabelle = CostruisciTabelle();
    return tabelle;
}

const Tabella *TrovaTabella(const QString &nome)
{
    for (const Tabella &t : Tabelle())
        if (t.nome.compare(nome, Qt::CaseInsensitive) == 0)
            return &t;
    return nullptr;
}

QList<const Tabella *> TabelleDi(Archivio a)
{
    QList<const Tabella *> elenco;
    for (const Tabella &t : Tabelle())
        if (t.archivio == a)
            elenco.append(&t);
    return elenco;
}

QString NomeIndiceSql(const Tabella &t, const Indice &i)
{
    return t.nome + QLatin1Char('_') + i.nome;
}

namespace {

QString Virgolette(const QString &nome)
{
    return QLatin1Char('"') + nome + QLatin1Char('"');
}

bool Esegui(QSqlDatabase &db, const QString &sql, QString *errore)
{
    QSqlQuery q(db);
    if (q.exec(sql))
        return true;
    if (errore)
        *errore = sql + QLatin1Char('\n') + TestoErroreSqlite(q.lastError());
    return false;
}

// Runs the statements as one unit: a savepoint starts a transaction of its
// own outside one and nests inside one, and one commit is much faster than
// one per statement.
bool EseguiTutti(QSqlDatabase &db, const QStringList &istruzioni, QString *errore)
{
    const QString nome = QStringLiteral("crea_schema");
    // The server takes a savepoint only inside a transaction: outside one
    // the unit is a transaction of its own.
    const bool propria = SuServer(db) && !Esegui(db, QStringLiteral("SAVEPOINT ") + nome, nullptr);
    if (propria ? !Esegui(db, QStringLiteral("BEGIN"), errore)
                : !SuServer(db) && !Esegui(db, QStringLiteral("SAVEPOINT ") + nome, errore))
        return false;
    for (const QString &sql : istruzioni) {
        if (!Esegui(db, sql, errore)) {
            if (propria) {
                Esegui(db, QStringLiteral("ROLLBACK"), nullptr);
            } else {
                Esegui(db, QStringLiteral("ROLLBACK TO ") + nome, nullptr);
                Esegui(db, QStringLiteral("RELEASE ") + nome, nullptr);
            }
            return false;
        }
    }
    return Esegui(db, propria ? QStringLiteral("COMMIT") : QStringLiteral("RELEASE ") + nome,
                  errore);
}

QStringList IstruzioniIndici(Archivio a, const QString &schema, bool primari, Motore m)
{
    QStringList istruzioni;
    for (const Tabella *t : TabelleDi(a))
        for (const Indice &i : t->indici)
            if ((i.nome == IndicePrimario) == primari)
                istruzioni.append(SqlCreaIndice(*t, i, schema, m));
    return istruzioni;
}

} // namespace

QString SqlCreaTabella(const Tabella &t, const QString &schema, Motore m)
{
    const bool server = m == Motore::Postgres;
    QStringList colonne;
    for (const Colonna &c : t.colonne)
        colonne.append((server ? NomeSql(c.nome) : Virgolette(c.nome)) + QLatin1Char(' ')
                       + Tabella::tipoSql(c, m));
    if (server)
        colonne.append(QStringLiteral("rowid bigint GENERATED BY DEFAULT AS IDENTITY PRIMARY KEY"));
    return QStringLiteral("CREATE TABLE IF NOT EXISTS %1.%2 (%3)")
        .arg(Virgolette(schema), server ? NomeSql(t.nome) : Virgolette(t.nome),
             colonne.join(QStringLiteral(", ")));
}

QString SqlCreaIndice(const Tabella &t, const Indice &i, const QString &schema, Motore m)
{
    const QString unico = i.unico ? QStringLiteral("UNIQUE ") : QString();
    QStringList colonne;
    if (m == Motore::Postgres) {
        // The server names an index inside its table's schema.
        for (const QString &c : i.colonne)
            colonne.append(NomeSql(c) + QStringLiteral(" NULLS FIRST"));
        return QStringLiteral("CREATE %1INDEX IF NOT EXISTS %2 ON %3.%4 (%5)")
            .arg(unico, NomeSql(NomeIndiceSql(t, i)), Virgolette(schema), NomeSql(t.nome),
                 colonne.join(QStringLiteral(", ")));
    }
    for (const QString &c : i.colonne)
        colonne.append(Virgolette(c));
    return QStringLiteral("CREATE %1INDEX IF NOT EXISTS %2.%3 ON %4 (%5)")
        .arg(unico, Virgolette(schema), Virgolette(NomeIndiceSql(t, i)), Virgolette(t.nome),
             colonne.join(QStringLiteral(", ")));
}

bool CreaTabelle(QSqlDatabase &db, Archivio a, const QString &schema, QString *errore)
{
    const Motore m = MotoreDi(db);
    QStringList istruzioni;
    if (m == Motore::Postgres)
        istruzioni.append(QStringLiteral("CREATE SCHEMA IF NOT EXISTS ") + Virgolette(schema));
    for (const Tabella *t : TabelleDi(a))
        istruzioni.append(SqlCreaTabella(*t, schema, m));
    return EseguiTutti(db, istruzioni + IstruzioniIndici(a, schema, true, m), errore);
}

bool CreaIndiciSecondari(QSqlDatabase &db, Archivio a, const QString &schema,
                         QString *errore)
{
    return EseguiTutti(db, IstruzioniIndici(a, schema, false, MotoreDi(db)), errore);
}

bool CreaSchema(QSqlDatabase &db, Archivio a, const QString &schema, QString *errore)
{
    return CreaTabelle(db, a, schema, errore) && CreaIndiciSecondari(db, a, schema, errore);
}

const std::array<QString, NumeroAllegati> &ElencoAllegati()
{
    static const std::array<QString, NumeroAllegati> elenco = {
        QStringLiteral("AbbVisite"),     QStringLiteral("Clienti"),
        QStringLiteral("ClientiNew"),    QStringLiteral("Cointestatari"),
        QStringLiteral("Colori"),        QStringLiteral("ColoriGrp"),
        QStringLiteral("DistBanche"),    QStringLiteral("DistCausali"),
        QStringLiteral("Distinte"),      QStringLiteral("Distinte04"),
        QStringLiteral("FondiPensione"), QStringLiteral("Layout"),
        QStringLiteral("LayOutCol"),     QStringLiteral("Localita"),
        QStringLiteral("Mandati"),       QString(),
        QStringLiteral("Moduli"),        QStringLiteral("Movimenti"),
        QStringLiteral("ParamImp"),      QStringLiteral("Percorsi"),
        QStringLiteral("Performance"),   QStringLiteral("PersPortafoglio"),
        QStringLiteral("RelProd"),       QStringLiteral("Societa"),
        QStringLiteral("Squadre"),       QStringLiteral("TabCambi"),
        QStringLiteral("TabCategExpo"),  QStringLiteral("TabCategorie"),
        QStringLiteral("TabCausali"),    QStringLiteral("TabEspApp"),
        QStringLiteral("TabGruppi"),     QStringLiteral("TabModalita"),
        QStringLiteral("TabMultiPartner"), QStringLiteral("TabNazioni"),
        QStringLiteral("TabProdExpo"),   QStringLiteral("TabProdotti"),
        QStringLiteral("TabProvincie"),  QStringLiteral("TabStanley"),
        QStringLiteral("TabStanleyC"),   QStringLiteral("tabStatiApp"),
        QStringLiteral("TabTipoEC"),     QStringLiteral("Documenti"),
        QStringLiteral("DocumentiCli"),  QStringLiteral("ClientiMM"),
        QStringLiteral("Cedole"),
        QStringLiteral("VisiteN"),       QStringLiteral("Azioni"),
        QStringLiteral("Appuntamenti"),  QStringLiteral("TabAzioni"),
        QString(),
    };
    return elenco;
}

Archivio ArchivioAllegato(int indice)
{
    return indice < 45 ? Archivio::Dati : Archivio::Visite;
}

} // namespace sorvane
