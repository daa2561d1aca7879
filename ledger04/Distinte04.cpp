#include "ledger04/Distinte04.h"

#include "frame/core/Campi.h"
#include "frame/core/Valore.h"
#include "store/Recordset.h"
#include "store/Schema.h"
#include "store/Transazione.h"

namespace sorvane {

namespace {

const QString Origine = QStringLiteral(
    " FROM (Clienti INNER JOIN Distinte04 ON Clienti.CliCodice = Distinte04.dstCliente)"
    " INNER JOIN DistCausali ON Distinte04.dstCausale = DistCausali.Codice");

const QString CampiGriglia = QStringLiteral(
    "SELECT Distinte04.dstCodice, Distinte04.dstData, CliRagsoc, Distinte04.dstCodP,"
    " Descrizione, Distinte04.dstMoneta, Distinte04.dstImporto");

// The engine's words, when there are any, under the sentence.
QString ConMotivo(const QString &testo, const QString &motivo)
{
    return motivo.isEmpty() ? testo : testo + QLatin1Char('\n') + motivo;
}

EsitoGestione Esito(bool riuscito, const QString &errore = QString())
{
    EsitoGestione e;
    e.riuscito = riuscito;
    e.errore = errore;
    return e;
}

std::int32_t Intero(const QVariant &valore)
{
    std::int32_t n = 0;
    return LeggiIntero32(valore, &n) ? n : 0;
}

RigaDistinta04 LeggiRiga04(const Recordset &rs)
{
    auto testo = [&rs](const char *nome) { return TestoDaCampo(rs.Fields(QLatin1String(nome))); };
    auto campo = [&rs](const char *nome) { return rs.Fields(QLatin1String(nome)); };
    RigaDistinta04 r;
    r.dstCodice = Intero(campo("dstCodice"));
    r.dstDitta = testo("dstDitta");
    r.dstData = Intero(campo("dstData"));
    r.dstCliente = Intero(campo("dstCliente"));
    r.dstCausale = testo("dstCausale");
    r.dstMoneta = testo("dstMoneta");
    r.dstImporto = CDbl(DataDaCampo(campo("dstImporto")));
    r.dstCodP = testo("dstCodP");
    return r;
}

bool ScriviRiga04(Recordset &rs, const RigaDistinta04 &r)
{
    // A blank text is stored as one blank, as every text of the ledgers.
    auto testo = [](const QString &t) {
        const QString s = t.trimmed();
        return s.isEmpty() ? QStringLiteral(" ") : s;
    };
    return rs.SetField(QStringLiteral("dstCodice"), r.dstCodice)
           && rs.SetField(QStringLiteral("dstDitta"), testo(r.dstDitta))
           && rs.SetField(QStringLiteral("dstData"), r.dstData)
           && rs.SetField(QStringLiteral("dstCliente"), r.dstCliente)
           && rs.SetField(QStringLiteral("dstCausale"), testo(r.dstCausale))
           && rs.SetField(QStringLiteral("dstMoneta"), testo(r.dstMoneta))
           && rs.SetField(QStringLiteral("dstImporto"), r.dstImporto)
           && rs.SetField(QStringLiteral("dstCodP"), testo(r.dstCodP));
}

bool Primaria(Recordset &rs)
{
    return rs.Index() == IndicePrimario || rs.SetIndex(IndicePrimario);
}

// Adds the row or changes the one of its number, inside the caller's
// transaction.
bool Scrivi(Recordset &rs, const RigaDistinta04 &riga)
{
    const bool presente = CercaRiga04(rs, riga.dstCodice).has_value();
    if (!(presente ? rs.Edit() : rs.AddNew()))
        return false;
    if (ScriviRiga04(rs, riga) && rs.Update())
        return true;
    rs.CancelUpdate();
    return false;
}

} // namespace

std::int32_t NumeroMostrato04(std::int32_t codice)
{
    return codice > BaseCodiceManuale ? codice - BaseCodiceManuale : codice;
}

std::int32_t ProssimoCodice04(Recordset &distinte04)
{
    std::int32_t ultimo = 0;
    if (Primaria(distinte04)
        && distinte04.Seek(QStringLiteral("<"), QVariant(CodiceRiservato04))
        && !distinte04.NoMatch())
        ultimo = Intero(distinte04.Fields(QStringLiteral("dstCodice")));
    return std::max(ultimo, BaseCodiceManuale) + 1;
}

std::optional<RigaDistinta04> CercaRiga04(Recordset &distinte04, std::int32_t codice)
{
    if (!Primaria(distinte04) || !distinte04.Seek(QStringLiteral("="), QVariant(codice))
        || distinte04.NoMatch())
        return std::nullopt;
    return LeggiRiga04(distinte04);
}

CondizioneDistinte CondizioneEstrazione04(const FiltroDistinte &filtro, std::int32_t oggi)
{
    // The ledger has no closed mark: every row counts as a closed one shown.
    FiltroDistinte f = filtro;
    f.ancheChiusi = true;
    return CondizioneEstrazione(f, oggi);
}

CondizioneDistinte CondizioneCliente04(std::int32_t cliente)
{
    CondizioneDistinte c;
    if (cliente > 0) {
        c.where = QStringLiteral(" WHERE dstCliente = ?");
        c.parametri = {cliente};
    }
    return c;
}

QString OrdineDistinte04() { return QStringLiteral(" ORDER BY dstData, dstCodice"); }

QString QueryLista04(const CondizioneDistinte &condizione)
{
    return CampiGriglia + Origine + condizione.where + OrdineDistinte04();
}

QString QueryStampa04(const CondizioneDistinte &condizione)
{
    return QStringLiteral("SELECT Distinte04.*, CliRagsoc, Descrizione, Segno") + Origine
           + condizione.where + OrdineDistinte04();
}

EsitoGestione SalvaRiga04(Recordset &distinte04, const RigaDistinta04 &riga)
{
    Transazione t;
    if (!t.attiva())
        return Esito(false, t.errore());
    if (!Scrivi(distinte04, riga))
        return Esito(false, distinte04.Errore());
    if (!t.conferma())
        return Esito(false, t.errore());
    return Esito(true);
}

EsitoGestione AggiungiRiga04(Recordset &distinte04, RigaDistinta04 &riga)
{
    // The number is taken inside the transaction that writes the row, so
    // that no other program takes it in between.
    Transazione t;
    if (!t.attiva())
        return Esito(false, t.errore());
    riga.dstCodice = ProssimoCodice04(distinte04);
    if (!Scrivi(distinte04, riga))
        return Esito(false, distinte04.Errore());
    if (!t.conferma())
        return Esito(false, t.errore());
    return Esito(true);
}

EsitoGestione EliminaRiga04(Recordset &distinte04, std::int32_t codice)
{
    const QString testo = QStringLiteral("NON CANCELLO IL MOVIMENTO  ");
    Transazione t;
    if (!t.attiva())
        return Esito(false, ConMotivo(testo, t.errore()));
    if (CercaRiga04(distinte04, codice) && !distinte04.Delete())
        return Esito(false, ConMotivo(testo, distinte04.Errore()));
    if (!t.conferma())
        return Esito(false, ConMotivo(testo, t.errore()));
    return Esito(true);
}

} // namespace sorvane
