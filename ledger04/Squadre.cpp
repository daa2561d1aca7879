#include "ledger04/Squadre.h"

#include "frame/core/Campi.h"
#include "frame/core/Valore.h"
#include "store/Cliente.h"
#include "store/Connessione.h"
#include "store/Recordset.h"
#include "store/Schema.h"
#include "store/Motore.h"

#include <QSqlQuery>

namespace sorvane {

namespace {

constexpr int LarghezzaCodice = 6;
constexpr int LarghezzaNome = 30;
constexpr int LarghezzaIndirizzo = 22;

QString Larga(const QString &testo, int larghezza)
{
    return testo.leftJustified(larghezza, QLatin1Char(' '), true);
}

QList<std::int32_t> Codici(QSqlQuery &q)
{
    QList<std::int32_t> codici;
    while (q.next()) {
        std::int32_t codice = 0;
        if (LeggiIntero32(q.value(0), &codice))
            codici.append(codice);
    }
    return codici;
}

} // namespace

QString TestoSquadra(const BufferCliente &cliente)
{
    return cliente.Codice == 0 ? QString() : cliente.RagsocEstesa.trimmed();
}

std::int32_t NumeroSquadra(const QString &didascalia)
{
    std::int32_t numero = 0;
    return LeggiIntero32(DataDaCampo(didascalia.trimmed()), &numero) ? numero : 0;
}

QString TitoloSquadra(const QString &didascalia)
{
    return QStringLiteral("ELENCO CLIENTI COMPONENTI IL GRUPPO N. ") + didascalia.trimmed();
}

QString RigaMembro(std::int32_t codice, const QString &ragsoc, const QString &indirizzo,
                   const QString &localita)
{
    const QString blank = QStringLiteral(" ");
    return Larga(AllineaCodice(QString::number(codice), LarghezzaCodice), LarghezzaCodice)
           + blank + Larga(ragsoc, LarghezzaNome) + blank
           + Larga(indirizzo, LarghezzaIndirizzo) + blank
           + Larga(localita, LarghezzaIndirizzo);
}

std::int32_t CodiceDaRiga(const QString &riga)
{
    const double valore = Val(riga.left(LarghezzaCodice).trimmed());
    return valore > 0 && valore < 2147483648.0 ? static_cast<std::int32_t>(valore) : 0;
}

QStringList RigheSquadra(std::int32_t squadra)
{
    QStringList righe;
    if (squadra == 0)
        return righe;
    QSqlQuery q(DbDati());
    LetturaInAvanti(q);
    q.prepare(QStringLiteral("SELECT Cliente FROM Squadre WHERE Squadra = ?"));
    q.addBindValue(squadra);
    if (!q.exec())
        return righe;
    const QList<std::int32_t> membri = Codici(q);
    if (membri.isEmpty())
        return righe;
    Recordset clienti = Recordset::Apri(DbDati(), QStringLiteral("Clienti"));
    if (!clienti.IsOpen() || !clienti.SetIndex(IndicePrimario))
        return righe;
    for (std::int32_t codice : membri) {
        if (!clienti.Seek(QStringLiteral("="), QVariant(codice)) || clienti.NoMatch()) {
            righe.append(RigaMembro(codice, CodiceInesistente, QString(), QString()));
            continue;
        }
        auto campo = [&clienti](const char *nome) {
            return TestoDaCampo(clienti.Fields(QLatin1String(nome))).trimmed();
        };
        righe.append(RigaMembro(codice, campo("CliRagsoc"), campo("CliIndirizzo"),
                                campo("CliLocalita")));
    }
    clienti.Close();
    return righe;
}

QList<std::int32_t> MembriSquadra(std::int32_t squadra)
{
    if (squadra == 0)
        return {};
    QSqlQuery q(DbDati());
    LetturaInAvanti(q);
    q.prepare(QStringLiteral("SELECT Cliente FROM Squadre WHERE Squadra = ? ORDER BY Cliente"));
    q.addBindValue(squadra);
    if (!q.exec())
        return {};
    return Codici(q);
}

QString ElencoGruppo(std::int32_t squadra, QList<std::int32_t> *membri)
{
    const QList<std::int32_t> codici = MembriSquadra(squadra);
    if (membri)
        *membri = codici;
    QStringList testi;
    for (std::int32_t c : codici)
        testi.append(QString::number(c));
    return testi.join(QStringLiteral(", "));
}

QueryMembri AltriMembri(std::int32_t squadra, std::int32_t cliente)
{
    return {QStringLiteral("SELECT Cliente FROM Squadre WHERE Squadra = ? AND Cliente <> ?"),
            {squadra, cliente}};
}

} // namespace sorvane
