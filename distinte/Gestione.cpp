#include "distinte/Gestione.h"

#include "frame/core/Campi.h"
#include "frame/core/Giorni.h"
#include "frame/core/Valore.h"
#include "store/Transazione.h"

namespace sorvane {

namespace {

const QString Blank = QStringLiteral(" ");

const QString Origine = QStringLiteral(
    " FROM (Clienti INNER JOIN Distinte ON Clienti.CliCodice = Distinte.dstCliente)"
    " INNER JOIN DistCausali ON Distinte.dstCausale = DistCausali.Codice");

// The grid's fields, in the order of ColonnaGestione.
const QString CampiGriglia = QStringLiteral(
    "SELECT Distinte.dstCodice, Distinte.dstPrg, Distinte.dstData, CliRagsoc,"
    " Distinte.dstCodP0, Distinte.dstCodP1, Distinte.dstCodP2, Distinte.dstCodP3,"
    " Distinte.dstCodP4, Descrizione, Distinte.dstMoneta, Distinte.dstImporto,"
    " Distinte.dstAssegno, Distinte.dstBanca, Distinte.dstChiusa, Distinte.dstSpeseUT");

QString NomeFetta(int i) { return QStringLiteral("dstCodP") + QString::number(i); }

// The code a slice shows on the form: without its mark, trimmed.
QString CodiceMostrato(const QString &fetta) { return TagliaMarca(fetta).trimmed(); }

// The slice the change form writes: the text shown keeps the mark state the
// stored slice had; any other text is a code still to confirm.
QString FettaDelModulo(const QString &testo, const QString &originale)
{
    const QString codice = testo.trimmed();
    if (codice.isEmpty())
        return Blank;
    if (codice == CodiceMostrato(originale) && !HaMarca(originale))
        return codice;
    return codice + MarcaAperta;
}

bool Aperta(const RigaDistinta &riga)
{
    for (const QString &f : riga.dstCodP) {
        if (HaMarca(f))
            return true;
    }
    return false;
}

EsitoGestione Fallito(const QString &errore)
{
    EsitoGestione e;
    e.errore = errore;
    return e;
}

} // namespace

std::int32_t FiltroDistinte::cliente() const
{
    const double valore = Val(codiceCliente.trimmed());
    return valore > 0 && valore < 2147483648.0 ? static_cast<std::int32_t>(valore) : 0;
}

CondizioneDistinte CondizioneEstrazione(const FiltroDistinte &filtro, std::int32_t oggi)
{
    const std::optional<QDate> dal = LeggiData(filtro.dal);
    const std::optional<QDate> al = LeggiData(filtro.al);
    CondizioneDistinte c;
    c.where = QStringLiteral(" WHERE dstData BETWEEN ? AND ?");
    c.parametri = {dal ? GiornoDaData(*dal) : 0, al ? GiornoDaData(*al) : oggi};
    if (filtro.cliente() > 0) {
        c.where += QStringLiteral(" AND dstCliente = ?");
        c.parametri.append(filtro.cliente());
    }
    const QString ditta = filtro.ditta.trimmed();
    if (!ditta.isEmpty()) {
        c.where += QStringLiteral(" AND dstDitta = ?");
        c.parametri.append(ditta);
    }
    if (!filtro.ancheChiusi)
        c.where += QStringLiteral(" AND dstChiusa <> 'S'");
    return c;
}

QString OrdineDistinte() { return QStringLiteral(" ORDER BY dstData, dstCodice, dstPrg"); }

QString OrdinePer(const QString &campo, bool discendente)
{
    const QString coda = campo == QLatin1String("dstData")
                             ? QStringLiteral(", dstCodice, dstPrg")
                             : QStringLiteral(", dstData, dstCodice, dstPrg");
    return QStringLiteral(" ORDER BY ") + campo
           + (discendente ? QStringLiteral(" DESC") : QStringLiteral(" ASC")) + coda;
}

QString OrdineColonna(int colonna, bool discendente)
{
    switch (colonna) {
    case GesData: return OrdinePer(QStringLiteral("dstData"), discendente);
    case GesNominativo: return OrdinePer(QStringLiteral("CliRagsoc"), discendente);
    case GesCausale: return OrdinePer(QStringLiteral("Descrizione"), discendente);
    case GesImporto: return OrdinePer(QStringLiteral("dstImporto"), discendente);
    case GesAssegno: return OrdinePer(QStringLiteral("dstAssegno"), discendente);
    case GesBanca: return OrdinePer(QStringLiteral("dstBanca"), discendente);
    case GesSpese: return OrdinePer(QStringLiteral("dstSpeseUT"), discendente);
    default: return {};
    }
}

QString QueryGestione(const CondizioneDistinte &condizione, const QString &ordine)
{
    return CampiGriglia + Origine + condizione.where + ordine;
}

QString QueryStampaDistinte(const CondizioneDistinte &condizione)
{
    return QStringLiteral("SELECT Distinte.*, CliRagsoc, Descrizione, Segno") + Origine
           + condizione.where + OrdineDistinte();
}

EsitoMarca InvertiMarca(Recordset &distinte, std::int32_t codice, const QString &prg, int fetta)
{
    EsitoMarca esito;
    if (fetta < 0 || fetta >= FetteProdotto)
        return esito;
    Transazione t;
    if (!t.attiva()) {
        esito.errore = t.errore();
        return esito;
    }
    const std::optional<RigaDistinta> riga = CercaRiga(distinte, codice, prg);
    const QString testo = riga ? riga->dstCodP[fetta] : QString();
    if (testo.trimmed().isEmpty()) {
        esito.riuscito = true;
        return esito;
    }
    const QString nuovo =
        HaMarca(testo) ? TagliaMarca(testo) : TogliSpazi(testo) + QString(MarcaAperta);
    if (!distinte.Edit() || !distinte.SetField(NomeFetta(fetta), TogliSpazi(nuovo))
        || !distinte.Update()) {
        esito.errore = distinte.Errore();
        distinte.CancelUpdate();
        return esito;
    }
    esito.chiusa = AggiornaChiusa(distinte, codice);
    if (!esito.chiusa.errore.isEmpty()) {
        esito.errore = esito.chiusa.errore;
        esito.chiusa = {};
        return esito;
    }
    if (!t.conferma()) {
        esito.errore = t.errore();
        esito.chiusa = {};
        return esito;
    }
    esito.riuscito = true;
    esito.toccata = true;
    return esito;
}

std::optional<Movimento> MovimentoDaModificare(Recordset &distinte, std::int32_t codice,
                                               bool *ricostruita, QString *errore)
{
    if (ricostruita)
        *ricostruita = false;
    if (std::optional<Movimento> m = LeggiMovimento(distinte, codice))
        return m;
    std::optional<RigaDistinta> giro = CercaRiga(distinte, codice, RigaGiro);
    if (!giro)
        return std::nullopt;

    // A movement is never left without its main row: it takes row "1"'s
    // header, with no codes of its own.
    RigaDistinta principale = *giro;
    principale.dstPrg = RigaPrincipale;
    principale.dstChiusa = Blank;
    principale.dstCodP.fill(Blank);
    Transazione t;
    bool scritta = t.attiva() && distinte.AddNew();
    if (scritta) {
        ScriviRiga(distinte, principale);
        scritta = distinte.Update();
        if (!scritta)
            distinte.CancelUpdate();
    }
    const QString motivo = t.attiva() ? distinte.Errore() : t.errore();
    if (!scritta || !t.conferma()) {
        if (errore)
            *errore = scritta ? t.errore() : motivo;
        return std::nullopt;
    }
    if (ricostruita)
        *ricostruita = true;
    return LeggiMovimento(distinte, codice);
}

Movimento MovimentoModificato(const Movimento &originale, const RigaDistinta &testata,
                              const std::array<QString, FetteProdotto> &prodotti,
                              const std::array<QString, FetteProdotto> &giro)
{
    const std::int32_t codice = originale.principale.dstCodice;
    Movimento m;
    m.principale = testata;
    m.principale.dstCodice = codice;
    m.principale.dstPrg = RigaPrincipale;
    RigaDistinta secondo = m.principale;
    secondo.dstPrg = RigaGiro;
    bool giroPieno = false;
    for (int i = 0; i < FetteProdotto; ++i) {
        m.principale.dstCodP[i] = FettaDelModulo(prodotti[i], originale.principale.dstCodP[i]);
        const QString prima = originale.giro ? originale.giro->dstCodP[i] : QString();
        secondo.dstCodP[i] = FettaDelModulo(giro[i], prima);
        giroPieno = giroPieno || !giro[i].trimmed().isEmpty();
    }
    if (giroPieno)
        m.giro = secondo;
    const bool aperto = Aperta(m.principale) || (m.giro && Aperta(*m.giro));
    const QString chiusa = aperto ? Blank : MovimentoChiuso;
    m.principale.dstChiusa = chiusa;
    if (m.giro)
        m.giro->dstChiusa = chiusa;
    return m;
}

EsitoGestione SalvaModifica(Recordset &distinte, const Movimento &movimento)
{
    if (movimento.principale.dstCodice <= 0)
        return Fallito(QStringLiteral("movimento senza numero"));
    Transazione t;
    if (!t.attiva())
        return Fallito(t.errore());
    if (ScriviInLavoro(distinte, movimento) == 0)
        return Fallito(distinte.Errore());
    if (!t.conferma())
        return Fallito(t.errore());
    EsitoGestione e;
    e.riuscito = true;
    return e;
}

EsitoGestione EliminaMovimento(Recordset &distinte, std::int32_t codice)
{
    const QString numero = QString::number(codice);
    const QString principale = QStringLiteral("NON CANCELLO IL MOVIMENTO (0)") + numero;
    const QString giro = QStringLiteral("NON CANCELLO IL MOVIMENTO (g1)") + numero;
    auto fallito = [](const QString &testo, const QString &motivo) {
        return Fallito(motivo.isEmpty() ? testo : testo + QLatin1Char('\n') + motivo);
    };
    Transazione t;
    if (!t.attiva())
        return fallito(principale, t.errore());
    if (CercaRiga(distinte, codice, RigaPrincipale) && !distinte.Delete())
        return fallito(principale, distinte.Errore());
    if (CercaRiga(distinte, codice, RigaGiro) && !distinte.Delete())
        return fallito(giro, distinte.Errore());
    if (!t.conferma())
        return fallito(giro, t.errore());
    EsitoGestione e;
    e.riuscito = true;
    return e;
}

} // namespace sorvane
