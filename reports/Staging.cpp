#include "reports/Staging.h"

#include "frame/core/Messaggi.h"
#include "frame/core/Sessione.h"
#include "reports/Gstampe.h"
#include "store/Connessione.h"
#include "store/Transazione.h"
#include "store/Motore.h"

#include <QSqlError>
#include <QSqlQuery>

namespace sorvane {

namespace {

const QString kTabelle[] = {QStringLiteral("PrtTesta"), QStringLiteral("PrtCorpo"),
                            QStringLiteral("PrtPiede")};

bool Fallisce(int passo, const QString &errore)
{
    sessione().CodiceStop = std::int16_t(passo);
    sessione().TestoErrore = errore;
    Messaggio(TestoPassoStampa(passo), QString(), Icona::Stop);
    return false;
}

// One row through the recordset: every field by its name, so that a name
// the table lacks is a failure and not a silent loss.
bool Scrivi(Recordset &rs, const QVariantMap &riga)
{
    if (!rs.AddNew())
        return false;
    for (auto it = riga.cbegin(); it != riga.cend(); ++it) {
        if (!rs.SetField(it.key(), it.value())) {
            rs.CancelUpdate();
            return false;
        }
    }
    return rs.Update();
}

} // namespace

ConsegnaStampa &consegnaStampa()
{
    static ConsegnaStampa c;
    return c;
}

QString TestoPassoStampa(int passo)
{
    switch (passo) {
    case PassoPulizia: return QStringLiteral("ERRORE 1: PULIZIA TEMPORANEI DI STAMPA");
    case PassoApertura: return QStringLiteral("ERRORE 2: APERTURA TEMPORANEI DI STAMPA");
    case PassoAggiornamento:
        return QStringLiteral("ERRORE 3: AGGIORNAMENTO TEMPORANEI DI STAMPA");
    default: return QString();
    }
}

bool PreparaTemporanei(const DatiReport &righe)
{
    QSqlDatabase db = DbLavoro();
    sessione().CodiceStop = PassoPulizia;
    for (const QString &tabella : kTabelle) {
        QSqlQuery q(db);
        if (!q.exec(QStringLiteral("DELETE FROM ") + tabella))
            return Fallisce(PassoPulizia, TestoErroreSqlite(q.lastError()));
    }

    sessione().CodiceStop = PassoApertura;
    Recordset rs[3];
    for (int i = 0; i < 3; ++i) {
        rs[i] = Recordset::Apri(db, kTabelle[i], dbOpenTable);
        if (!rs[i].IsOpen())
            return Fallisce(PassoApertura, rs[i].Errore());
    }
    auto chiudi = [&rs] {
        for (Recordset &r : rs)
            r.Close();
    };

    sessione().CodiceStop = PassoAggiornamento;
    Transazione t(db);
    if (!t.attiva()) {
        chiudi();
        return Fallisce(PassoAggiornamento, t.errore());
    }
    bool ok = righe.testa.isEmpty() || Scrivi(rs[0], righe.testa);
    for (int i = 0; ok && i < righe.corpo.size(); ++i)
        ok = Scrivi(rs[1], righe.corpo.at(i));
    ok = ok && (righe.piede.isEmpty() || Scrivi(rs[2], righe.piede));
    QString errore;
    for (const Recordset &r : rs) {
        if (errore.isEmpty() && r.NumeroErrore() != 0)
            errore = r.Errore();
    }
    if (ok && !t.conferma()) {
        errore = t.errore();
        ok = false;
    }
    if (!ok) {
        t.annulla();
        chiudi();
        return Fallisce(PassoAggiornamento, errore);
    }
    chiudi();
    return true;
}

QString ModuloDiStampa(const QString &chiave)
{
    const QString predefinito = chiave + QStringLiteral(".rpt");
    QSqlQuery q(DbDati());
    LetturaInAvanti(q);
    bool ok = q.prepare(QStringLiteral("SELECT MdFile FROM Moduli WHERE MdKey = ?"));
    if (ok) {
        q.addBindValue(chiave);
        ok = q.exec();
    }
    if (ok && !q.next())
        return predefinito;
    const QString file = ok ? q.value(0).toString().trimmed() : QString();
    if (file.isEmpty()) {
        Messaggio(QStringLiteral("Tabella dei moduli non aggiornata!"));
        return predefinito;
    }
    return file;
}

bool StampaModulo(const QString &chiave, const DatiReport &righe, const QString &formula)
{
    if (!PreparaTemporanei(righe))
        return false;
    ConsegnaStampa &c = consegnaStampa();
    c.ModuloCorrente = ModuloDiStampa(chiave);
    c.FormulaCorrente = formula;
    Gstampe g;
    g.Load();
    sessione().CodiceStop = 0;
    return true;
}

} // namespace sorvane
