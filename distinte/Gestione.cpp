#include "distinte/Gestione.h"

#include "frame/core/Campi.h"
#include "frame/core/Giorni.h"
#include "frame/core/Valore.h"
#include "store/Connessione.h"
#include "store/Transazione.h"
#include "store/Motore.h"

#include <QSqlError>
#include <QStringList>

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

// The field of `Distinte`, `Clienti` or `DistCausali` that a grid column
// shows; empty for the codes.
QString CampoDellaColonna(int colonna)
{
    switch (colonna) {
    case GesPrg: return QStringLiteral("dstCodice");
    case GesRiga: return QStringLiteral("dstPrg");
    case GesData: return QStringLiteral("dstData");
    case GesNominativo: return QStringLiteral("CliRagsoc");
    case GesCausale: return QStringLiteral("Descrizione");
    case GesMoneta: return QStringLiteral("dstMoneta");
    case GesImporto: return QStringLiteral("dstImporto");
    case GesAssegno: return QStringLiteral("dstAssegno");
    case GesBanca: return QStringLiteral("dstBanca");
    case GesChiusa: return QStringLiteral("dstChiusa");
    case GesSpese: return QStringLiteral("dstSpeseUT");
    default: return {};
    }
}

// A sorted field of a joined table: its table, the table's code, the
// movement's column holding that code, and the third table with its join.
struct Legame
{
    const char *tabella;
    const char *codice;
    const char *legame;
    const char *altra;
    const char *unione;
};

const char *const UnioneClienti = "Clienti.CliCodice = Distinte.dstCliente";
const char *const UnioneCausali = "Distinte.dstCausale = DistCausali.Codice";

const Legame *LegameDi(const QString &campo)
{
    static const Legame cliente{"Clienti", "CliCodice", "dstCliente", "DistCausali",
                                UnioneCausali};
    static const Legame causale{"DistCausali", "Codice", "dstCausale", "Clienti",
                                UnioneClienti};
    if (campo == QLatin1String("CliRagsoc"))
        return &cliente;
    if (campo == QLatin1String("Descrizione"))
        return &causale;
    return nullptr;
}

// The tie-breaks after a field, as grid columns and as SQL.
QList<int> ColonneSpareggio(const QString &campo)
{
    if (campo == QLatin1String("dstData"))
        return {GesPrg, GesRiga};
    return {GesData, GesPrg, GesRiga};
}

QString ElencoSpareggio(const QString &campo)
{
    QStringList nomi;
    for (int c : ColonneSpareggio(campo))
        nomi.append(QStringLiteral("Distinte.") + CampoDellaColonna(c));
    return nomi.join(QStringLiteral(", "));
}

// The tables of a group's rows and of the search for the next group, with
// their joins: the movements first, then their client and reason; for a
// joined table's field, that table first, each value's movements after.
// A cross join keeps the order of the loops as written, so that each group
// walks the index on its own field (see the schema) and not the filter's
// date range over the whole ledger; the joins stand in the WHERE clause.
// The walks' ORDER BY names where Null goes as the indexes hold it (first),
// or an engine that puts it last by default would sort instead of walking.
struct Tavole
{
    QString da;
    QString unioni;
};

Tavole TavoleMovimenti()
{
    return {QStringLiteral(" FROM Distinte CROSS JOIN Clienti CROSS JOIN DistCausali"),
            QString::fromLatin1(UnioneClienti) + QStringLiteral(" AND ")
                + QString::fromLatin1(UnioneCausali)};
}

Tavole TavoleGruppi(const QString &campo)
{
    const Legame *l = LegameDi(campo);
    if (!l)
        return TavoleMovimenti();
    return {QStringLiteral(" FROM %1 CROSS JOIN Distinte CROSS JOIN %2")
                .arg(QString::fromLatin1(l->tabella), QString::fromLatin1(l->altra)),
            QStringLiteral("Distinte.%1 = %2.%3 AND ")
                    .arg(QString::fromLatin1(l->legame), QString::fromLatin1(l->tabella),
                         QString::fromLatin1(l->codice))
                + QString::fromLatin1(l->unione)};
}

QString Dove(const Tavole &tavole, const QString &where, const QString &altro)
{
    const QString resto = tavole.unioni + QStringLiteral(" AND ") + altro;
    return tavole.da
           + (where.isEmpty() ? QStringLiteral(" WHERE ") + resto
                              : where + QStringLiteral(" AND ") + resto);
}

// The filter of the search for the next group: its date range only tested
// on the rows met (a unary plus keeps the engine off the date's index),
// so that the search walks the sorted field's index from the last value
// and stops at its first row in range, and is no sort of the whole range.
QString FiltroDeiGruppi(const CondizioneDistinte &condizione)
{
    static const QString data = QStringLiteral(" WHERE dstData ");
    QString where = condizione.where;
    if (where.startsWith(data))
        where.replace(0, data.size(), QStringLiteral(" WHERE +dstData "));
    return where;
}

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
    // Empty values first ascending and last descending, whichever way the
    // engine places NULLs by itself; the date is never empty in a range.
    const QString nulli = campo == QLatin1String("dstData")
                              ? QString()
                              : campo + (discendente ? QStringLiteral(" IS NOT NULL DESC, ")
                                                     : QStringLiteral(" IS NOT NULL, "));
    return QStringLiteral(" ORDER BY ") + nulli + campo
           + (discendente ? QStringLiteral(" DESC") : QStringLiteral(" ASC")) + coda;
}

bool ColonnaDiTestata(int colonna)
{
    switch (colonna) {
    case GesData:
    case GesNominativo:
    case GesCausale:
    case GesImporto:
    case GesAssegno:
    case GesBanca:
    case GesSpese:
        return true;
    default:
        return false;
    }
}

QString OrdineColonna(int colonna, bool discendente)
{
    return ColonnaDiTestata(colonna) ? OrdinePer(CampoDellaColonna(colonna), discendente)
                                     : QString();
}

std::optional<OrdineLista> OrdineDellaColonna(int colonna, bool discendente)
{
    const QString clausola = OrdineColonna(colonna, discendente);
    if (clausola.isEmpty())
        return std::nullopt;
    OrdineLista o;
    o.campo = CampoDellaColonna(colonna);
    o.discendente = discendente;
    o.clausola = clausola;
    return o;
}

QString QueryGestione(const CondizioneDistinte &condizione, const QString &ordine)
{
    return CampiGriglia + Origine + condizione.where + ordine;
}

PagineDistinte::PagineDistinte(CondizioneDistinte condizione, OrdineLista ordine)
    : m_condizione(std::move(condizione)), m_ordine(std::move(ordine))
{
    for (int c = 0; c < ColonneGestione; ++c) {
        if (CampoDellaColonna(c) == m_ordine.campo)
            m_colonna = c;
    }
}

QString PagineDistinte::colonnaChiave() const
{
    if (const Legame *l = LegameDi(m_ordine.campo))
        return QString::fromLatin1(l->tabella) + QLatin1Char('.') + m_ordine.campo;
    return QStringLiteral("Distinte.") + m_ordine.campo;
}

bool PagineDistinte::esegui(const QString &sql, const QVariantList &valori, QSqlQuery *q,
                            QString *errore) const
{
    LetturaInAvanti(*q);
    bool riuscita = q->prepare(sql);
    for (const QVariant &v : valori)
        q->addBindValue(v);
    riuscita = riuscita && q->exec();
    if (!riuscita && errore)
        *errore = TestoErroreSqlite(q->lastError());
    return riuscita;
}

bool PagineDistinte::gruppoSeguente(QString *errore)
{
    m_ultime.clear();
    const bool discendente = m_ordine.discendente;
    // Ascending, the NULL group comes first; descending, last.
    const bool cercaValore = m_stato == Stato::Valore
                             || (m_stato == Stato::Inizio && discendente)
                             || (m_stato == Stato::Nulli && !discendente);
    if (!cercaValore) {
        m_stato = m_stato == Stato::Inizio ? Stato::Nulli : Stato::Fine;
        return true;
    }
    const QString chiave = colonnaChiave();
    QString condizione = chiave + QStringLiteral(" IS NOT NULL");
    QVariantList valori = m_condizione.parametri;
    if (m_stato == Stato::Valore) {
        condizione = chiave + (discendente ? QStringLiteral(" < ?") : QStringLiteral(" > ?"));
        valori.append(m_valore);
    }
    QSqlQuery q(Db());
    const QString sql = QStringLiteral("SELECT ") + chiave
                        + Dove(TavoleGruppi(m_ordine.campo), FiltroDeiGruppi(m_condizione), condizione) + QStringLiteral(" ORDER BY ") + chiave
                        + (discendente ? QStringLiteral(" DESC NULLS LAST") : QStringLiteral(" NULLS FIRST"))
                        + QStringLiteral(" LIMIT 1");
    if (!esegui(sql, valori, &q, errore))
        return false;
    if (q.next()) {
        m_stato = Stato::Valore;
        m_valore = q.value(0);
    } else {
        m_stato = discendente ? Stato::Nulli : Stato::Fine;
    }
    q.finish();
    return true;
}

bool PagineDistinte::righeDelGruppo(int quante, QList<QVariantList> *righe, QString *errore)
{
    QVariantList valori = m_condizione.parametri;
    QString condizione;
    const bool nulli = m_stato == Stato::Nulli;
    if (const Legame *l = LegameDi(m_ordine.campo)) {
        // The group's codes: the movements' index on the code is walked in
        // the tie-breaks' order, with no sort of the whole group.
        QSqlQuery codici(Db());
        const QString sql = QStringLiteral("SELECT %1 FROM %2 WHERE %3")
                                .arg(QString::fromLatin1(l->codice),
                                     QString::fromLatin1(l->tabella), m_ordine.campo)
                            + (nulli ? QStringLiteral(" IS NULL") : QStringLiteral(" = ?"));
        if (!esegui(sql, nulli ? QVariantList() : QVariantList{m_valore}, &codici, errore))
            return false;
        QStringList segnaposti;
        while (codici.next()) {
            valori.append(codici.value(0));
            segnaposti.append(QStringLiteral("?"));
        }
        if (segnaposti.isEmpty())
            return true;
        condizione = QStringLiteral("Distinte.") + QString::fromLatin1(l->legame)
                     + QStringLiteral(" IN (") + segnaposti.join(QLatin1Char(',')) + QLatin1Char(')');
    } else {
        condizione = colonnaChiave() + (nulli ? QStringLiteral(" IS NULL") : QStringLiteral(" = ?"));
        if (!nulli)
            valori.append(m_valore);
    }
    const QList<int> spareggi = ColonneSpareggio(m_ordine.campo);
    const QString elenco = ElencoSpareggio(m_ordine.campo);
    if (!m_ultime.isEmpty()) {
        QStringList segnaposti;
        for (const QVariant &v : std::as_const(m_ultime)) {
            valori.append(v);
            segnaposti.append(QStringLiteral("?"));
        }
        condizione += QStringLiteral(" AND (") + elenco + QStringLiteral(") > (")
                      + segnaposti.join(QStringLiteral(", ")) + QLatin1Char(')');
    }
    valori.append(quante);
    QSqlQuery q(Db());
    const QString sql = CampiGriglia + Dove(TavoleMovimenti(), m_condizione.where, condizione)
                        + QStringLiteral(" ORDER BY ")
                        + QString(elenco).replace(QStringLiteral(", "), QStringLiteral(" NULLS FIRST, "))
                        + QStringLiteral(" NULLS FIRST LIMIT ?");
    if (!esegui(sql, valori, &q, errore))
        return false;
    const qsizetype prima = righe->size();
    while (q.next()) {
        QVariantList riga;
        riga.reserve(ColonneGestione);
        for (int c = 0; c < ColonneGestione; ++c)
            riga.append(q.value(c));
        righe->append(riga);
    }
    q.finish();
    if (righe->size() > prima) {
        const QVariantList &ultima = righe->constLast();
        m_ultime.clear();
        for (int c : spareggi)
            m_ultime.append(ultima[c]);
    }
    return true;
}

bool PagineDistinte::Prossime(int quante, QList<QVariantList> *righe, QString *errore)
{
    const qsizetype fine = righe->size() + quante;
    if (m_stato == Stato::Inizio && !gruppoSeguente(errore))
        return false;
    while (m_stato != Stato::Fine && righe->size() < fine) {
        const qsizetype prima = righe->size();
        if (!righeDelGruppo(int(fine - prima), righe, errore))
            return false;
        // A group that gave fewer rows than asked has no more.
        if (righe->size() < fine && !gruppoSeguente(errore))
            return false;
    }
    return true;
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
