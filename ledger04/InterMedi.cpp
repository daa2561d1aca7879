#include "ledger04/InterMedi.h"

#include "frame/core/Campi.h"
#include "frame/core/Giorni.h"
#include "frame/core/Impostazioni.h"
#include "frame/core/Messaggi.h"
#include "frame/core/Sessione.h"
#include "frame/core/Valore.h"
#include "ledger04/ControllaCampo4.h"
#include "ledger04/Distinte04.h"
#include "ledger04/Interessi.h"
#include "store/Cambi.h"
#include "store/Connessione.h"
#include "store/Transazione.h"
#include "store/Motore.h"

#include <QSqlError>
#include <QSqlQuery>

namespace sorvane {

namespace {

const QString Copia = QStringLiteral(
    "INSERT INTO WInterMedi ( CliRagsoc, dstCodice, dstDitta, dstData, dstCliente, dstCausale,"
    " dstMoneta, dstImporto, dstCodP, Descrizione, Segno )"
    " SELECT Clienti.CliRagsoc, Distinte04.dstCodice, Distinte04.dstDitta, Distinte04.dstData,"
    " Distinte04.dstCliente, Distinte04.dstCausale, Distinte04.dstMoneta,"
    " Distinte04.dstImporto, Distinte04.dstCodP, DistCausali.Descrizione, DistCausali.Segno");

const QString DellaSquadra = QStringLiteral(
    " FROM ((Squadre INNER JOIN Clienti ON Squadre.Cliente = Clienti.CliCodice)"
    " INNER JOIN Distinte04 ON Clienti.CliCodice = Distinte04.dstCliente)"
    " INNER JOIN DistCausali ON Distinte04.dstCausale = DistCausali.Codice"
    " WHERE Squadre.Squadra = ?");

const QString DelCliente = QStringLiteral(
    " FROM (Distinte04 INNER JOIN Clienti ON Distinte04.dstCliente = Clienti.CliCodice)"
    " INNER JOIN DistCausali ON Distinte04.dstCausale = DistCausali.Codice"
    " WHERE Clienti.CliCodice = ?");

std::int32_t Intero(const QVariant &valore)
{
    std::int32_t n = 0;
    return LeggiIntero32(DataDaCampo(valore), &n) ? n : 0;
}

std::optional<std::int32_t> Giorno(const QString &data)
{
    const std::optional<QDate> d = LeggiData(data);
    return d ? std::optional(std::int32_t(GiornoDaData(*d))) : std::nullopt;
}

EsitoGestione Esito(bool riuscito, const QString &errore = QString())
{
    EsitoGestione e;
    e.riuscito = riuscito;
    e.errore = errore;
    return e;
}

bool Esegui(QSqlQuery &q, const QString &sql, const QVariantList &valori)
{
    if (!q.prepare(sql))
        return false;
    for (const QVariant &v : valori)
        q.addBindValue(v);
    return q.exec();
}

QString DataDaCampi(const CampiMaschera &txt, int giorno)
{
    return txt.testo(giorno).trimmed() + QLatin1Char('/') + txt.testo(giorno + 1).trimmed()
           + QLatin1Char('/') + txt.testo(giorno + 2).trimmed();
}

std::int16_t &codiceStop() { return sessione().CodiceStop; }

// The day of a balance's currency: the date beside it, else the session's
// today.
std::int32_t GiornoDellaMoneta(const QString &data)
{
    const std::optional<QDate> d = LeggiData(data);
    if (d)
        return GiornoDaData(*d);
    return GiornoDaData(LeggiData(sessione().OggiTesto).value_or(QDate::currentDate()));
}

} // namespace

EsitoGestione EstraiInterMedi(const FiltroInterMedi &f, StatoInterMedi &stato)
{
    stato.DataInizio = Giorno(f.dal).value_or(0);
    stato.DataFine = Giorno(f.al).value_or(f.oggi);
    stato.ClienteEstratto = Intero(f.cliente);
    QString sql = Copia + (f.squadra > 0 ? DellaSquadra : DelCliente)
                  + QStringLiteral(" AND Distinte04.dstData BETWEEN ? AND ?"
                                   " AND Distinte04.dstImporto <> 0");
    QVariantList valori{f.squadra > 0 ? f.squadra : stato.ClienteEstratto, stato.DataInizio,
                        stato.DataFine};
    if (!f.ditta.trimmed().isEmpty()) {
        sql += QStringLiteral(" AND Distinte04.dstDitta = ?");
        valori.append(f.ditta.trimmed());
    }
    Transazione t;
    if (!t.attiva())
        return Esito(false, t.errore());
    QSqlQuery q(Db());
    if (!Esegui(q, QStringLiteral("DELETE FROM WInterMedi"), {}) || !Esegui(q, sql, valori))
        return Esito(false, TestoErroreSqlite(q.lastError()));
    if (!t.conferma())
        return Esito(false, t.errore());
    PrimoMovimento(stato);
    return Esito(true);
}

QString QueryListaInterMedi(bool squadra)
{
    return TestoListaInteressi(squadra).replace(
        QStringLiteral("SELECT *"), QStringLiteral("SELECT dstCodice, dstData, CliRagsoc, dstCodP,"
                                                   " Descrizione, dstMoneta, dstImporto"));
}

void PrimoMovimento(StatoInterMedi &stato)
{
    if (stato.DataInizio == 0 || stato.ClienteEstratto == 0) {
        stato.PrimoCliente = 0;
        stato.PrimaData = 0;
        QSqlQuery q(Db());
        LetturaInAvanti(q);
        // The movements only: the balance row takes its date from them.
        if (Esegui(q, QStringLiteral("SELECT dstData, dstCliente FROM WInterMedi"
                                     " WHERE dstCodice <> ? ORDER BY dstData LIMIT 1"),
                   {CodiceRiservato04})
            && q.next()) {
            stato.PrimaData = Intero(q.value(0));
            stato.PrimoCliente = Intero(q.value(1));
        }
    }
    if (stato.DataInizio > 0)
        stato.PrimaData = stato.DataInizio;
    if (stato.ClienteEstratto > 0)
        stato.PrimoCliente = stato.ClienteEstratto;
}

EsitoGestione ScriviSaldoIniziale(const SaldoIniziale &saldo, StatoInterMedi &stato)
{
    const double importo = LeggiImporto(saldo.importo).value_or(0);
    const std::int32_t data = Giorno(saldo.dal).value_or(stato.PrimaData);
    if (stato.PrimoCliente == 0)
        stato.PrimoCliente = Intero(saldo.cliente);
    Transazione t;
    if (!t.attiva())
        return Esito(false, t.errore());
    QSqlQuery q(Db());
    bool fatto = Esegui(q, QStringLiteral("DELETE FROM WInterMedi WHERE dstCodice = ?"),
                        {CodiceRiservato04});
    if (fatto && importo != 0) {
        QString nome;
        QSqlQuery c(Db());
        if (Esegui(c, QStringLiteral("SELECT CliRagsoc FROM Clienti WHERE CliCodice = ?"),
                   {stato.PrimoCliente})
            && c.next())
            nome = TestoDaCampo(c.value(0)).trimmed().left(35);
        c.finish();
        const QString ditta = TestoDaCampo(saldo.ditta, QStringLiteral(" "));
        const QString moneta = saldo.moneta.trimmed();
        fatto = Esegui(q,
                       QStringLiteral("INSERT INTO WInterMedi (dstCodice, dstDitta, dstData,"
                                      " dstCliente, CliRagsoc, dstCausale, dstCodP, dstMoneta,"
                                      " dstImporto, Descrizione, Segno)"
                                      " VALUES (?, ?, ?, ?, ?, ?, ' ', ?, ?, ?, ?)"),
                       {CodiceRiservato04, ditta, data, stato.PrimoCliente,
                        nome.isEmpty() ? QStringLiteral(" ") : nome,
                        QString::fromLatin1(CausaleSaldoIniziale),
                        moneta.isEmpty() ? QStringLiteral(" ") : moneta, importo,
                        QStringLiteral("Saldo iniziale"),
                        importo > 0 ? QStringLiteral("+") : QStringLiteral("-")});
    }
    if (!fatto)
        return Esito(false, TestoErroreSqlite(q.lastError()));
    if (!t.conferma())
        return Esito(false, t.errore());
    return Esito(true);
}

ControlloInterMedi::ControlloInterMedi(CampiMaschera &campi, ControlloCampi4 &mov)
    : txt(campi), movimento(mov)
{
}

QString ControlloInterMedi::DataDellaMoneta(int indice) const
{
    return DataDaCampi(txt, indice == CampoIMMonetaIniziale ? Campo04GiornoDal : Campo04GiornoAl);
}

QString ControlloInterMedi::MonetaProposta(int indice) const
{
    const std::int32_t giorno = GiornoDellaMoneta(DataDellaMoneta(indice));
    const Impostazioni &imp = impostazioni();
    return giorno < GiornoEuro ? imp.CodLit : imp.CodBase;
}

int ControlloInterMedi::ControllaCampoIM(int indice)
{
    movimento.CampoFuoco = 0;
    movimento.Squadra.reset();
    movimento.VersoEstrai = false;
    switch (indice) {
    case CampoIMMonetaIniziale:
    case CampoIMMonetaFinale: {
        codiceStop() = static_cast<std::int16_t>(indice);
        const QString moneta = txt.testo(indice).trimmed();
        if (moneta != impostazioni().CodBase) {
            CambioCampo = CercaCambio(moneta, GiornoDellaMoneta(DataDellaMoneta(indice)));
            if (CambioCampo == 0)
                return codiceStop();
        }
        break;
    }
    case CampoIMSaldoIniziale:
    case CampoIMSaldoFinale:
        codiceStop() = static_cast<std::int16_t>(indice);
        if (!LeggiImporto(txt.testo(indice)))
            return codiceStop();
        break;
    case CampoIMCodiceCliente:
    case CampoIMNomeCliente: {
        // The ledger's filter client, on a view that shows it these fields.
        CampiRinumerati vista(txt, {{Campo04CodiceFiltro, CampoIMCodiceCliente},
                                    {Campo04NomeFiltro, CampoIMNomeCliente}},
                              true);
        ControlloCampi4 clienti(vista);
        clienti.base.ricerca = movimento.base.ricerca;
        clienti.base.UltimoTasto = movimento.base.UltimoTasto;
        clienti.base.ClienteCorrente = movimento.base.ClienteCorrente;
        const int campo =
            indice == CampoIMCodiceCliente ? Campo04CodiceFiltro : Campo04NomeFiltro;
        const int codice = clienti.ControllaCampo4(campo);
        movimento.base.ClienteCorrente = clienti.base.ClienteCorrente;
        movimento.Squadra = clienti.Squadra;
        movimento.VersoEstrai = clienti.VersoEstrai;
        movimento.CampoFuoco = clienti.CampoFuoco > 0 ? CampoIMNomeCliente : 0;
        if (codice > 0)
            codiceStop() = static_cast<std::int16_t>(indice);
        return codiceStop();
    }
    default:
        return movimento.ControllaCampo4(indice);
    }
    codiceStop() = 0;
    return 0;
}

QString TestoErroreCampoIM(int codice)
{
    switch (codice) {
    case CampoIMMonetaIniziale:
    case CampoIMMonetaFinale: return TestoErroreCampo4(Campo04Moneta);
    case CampoIMSaldoIniziale:
    case CampoIMSaldoFinale: return TestoErroreCampo4(Campo04Importo);
    case CampoIMCodiceCliente:
    case CampoIMNomeCliente: return TestoErroreCampo4(Campo04CodiceCliente);
    default: return TestoErroreCampo4(codice);
    }
}

int MostraErroreCampoIM()
{
    std::int16_t &codice = codiceStop();
    if (codice < Campo04CodiceFiltro)
        return MostraErroreCampo4();
    const QString testo = TestoErroreCampoIM(codice);
    sessione().TestoErrore = testo;
    Messaggio(testo, QStringLiteral("KELVAR - ERRORE N. ") + QString::number(codice),
              Icona::Stop);
    return codice;
}

} // namespace sorvane
