#include "distinte/Movimento.h"

#include "distinte/ControllaCampo.h"
#include "distinte/Numerazione.h"
#include "frame/core/Campi.h"
#include "frame/core/Valore.h"
#include "store/Cliente.h"
#include "frame/core/Sessione.h"
#include "frame/core/Giorni.h"
#include "store/Schema.h"

namespace sorvane {

namespace {

const QString Blank = QStringLiteral(" ");

QString NomeFetta(int i) { return QStringLiteral("dstCodP") + QString::number(i); }

double Numero(const QVariant &v) { return CDbl(DataDaCampo(v)); }

std::int32_t Intero(const QVariant &v)
{
    std::int32_t n = 0;
    return LeggiIntero32(v, &n) ? n : 0;
}

bool Trova(Recordset &rs, std::int32_t codice, const QString &prg)
{
    if (rs.Index() != IndicePrimario)
        rs.SetIndex(IndicePrimario);
    return rs.Seek(QStringLiteral("="), QVariantList{codice, prg}) && !rs.NoMatch();
}

// No slice of the current row holds a mark.
bool FetteChiuse(const Recordset &rs)
{
    for (int i = 0; i < FetteProdotto; ++i) {
        if (HaMarca(TestoDaCampo(rs.Fields(NomeFetta(i)))))
            return false;
    }
    return true;
}

bool ScriviChiusa(Recordset &rs, const QString &valore)
{
    return rs.Edit() && rs.SetField(QStringLiteral("dstChiusa"), valore) && rs.Update();
}

// Adds or changes the row (codice, prg).
bool ScriviRigaInTabella(Recordset &rs, const RigaDistinta &riga)
{
    const bool nuova = !Trova(rs, riga.dstCodice, riga.dstPrg);
    if (!(nuova ? rs.AddNew() : rs.Edit()))
        return false;
    ScriviRiga(rs, riga);
    if (rs.Update())
        return true;
    rs.CancelUpdate();
    return false;
}

} // namespace

QString TogliSpazi(const QString &testo)
{
    qsizetype inizio = 0;
    qsizetype fine = testo.size();
    while (inizio < fine && testo[inizio] == QLatin1Char(' '))
        ++inizio;
    while (fine > inizio && testo[fine - 1] == QLatin1Char(' '))
        --fine;
    return testo.mid(inizio, fine - inizio);
}

QString TagliaMarca(const QString &fetta)
{
    const qsizetype marca = fetta.indexOf(MarcaAperta);
    return marca < 0 ? fetta : fetta.left(marca);
}

bool HaMarca(const QString &fetta) { return fetta.contains(MarcaAperta); }

QString FettaAperta(const QString &fetta)
{
    const QString codice = fetta.trimmed();
    return codice.isEmpty() ? Blank : codice + MarcaAperta;
}

QString FettaSalvata(const QString &fetta)
{
    const QString codice = fetta.trimmed();
    return codice.isEmpty() ? Blank : codice;
}

bool RigaDistinta::fetteVuote() const
{
    for (const QString &f : dstCodP) {
        if (!f.trimmed().isEmpty())
            return false;
    }
    return true;
}

RigaDistinta LeggiRiga(const Recordset &rs)
{
    auto testo = [&rs](const char *nome) {
        return TestoDaCampo(rs.Fields(QString::fromLatin1(nome)));
    };
    RigaDistinta r;
    r.dstCodice = Intero(rs.Fields(QStringLiteral("dstCodice")));
    r.dstPrg = testo("dstPrg");
    r.dstDitta = testo("dstDitta");
    r.dstData = Intero(rs.Fields(QStringLiteral("dstData")));
    r.dstCliente = Intero(rs.Fields(QStringLiteral("dstCliente")));
    r.dstCausale = testo("dstCausale");
    r.dstMoneta = testo("dstMoneta");
    r.dstImporto = Numero(rs.Fields(QStringLiteral("dstImporto")));
    r.dstAssegno = testo("dstAssegno");
    r.dstBanca = testo("dstBanca");
    r.dstSpeseUT = Numero(rs.Fields(QStringLiteral("dstSpeseUT")));
    for (int i = 0; i < FetteProdotto; ++i)
        r.dstCodP[i] = TestoDaCampo(rs.Fields(NomeFetta(i)));
    r.dstChiusa = testo("dstChiusa");
    return r;
}

void ScriviRiga(Recordset &rs, const RigaDistinta &r)
{
    rs.SetField(QStringLiteral("dstCodice"), r.dstCodice);
    rs.SetField(QStringLiteral("dstPrg"), r.dstPrg);
    rs.SetField(QStringLiteral("dstDitta"), r.dstDitta);
    rs.SetField(QStringLiteral("dstData"), r.dstData);
    rs.SetField(QStringLiteral("dstCliente"), r.dstCliente);
    rs.SetField(QStringLiteral("dstCausale"), r.dstCausale);
    rs.SetField(QStringLiteral("dstMoneta"), r.dstMoneta);
    rs.SetField(QStringLiteral("dstImporto"), r.dstImporto);
    rs.SetField(QStringLiteral("dstAssegno"), r.dstAssegno);
    rs.SetField(QStringLiteral("dstBanca"), r.dstBanca);
    for (int i = 0; i < FetteProdotto; ++i)
        rs.SetField(NomeFetta(i), r.dstCodP[i]);
    rs.SetField(QStringLiteral("dstSpeseUT"), r.dstSpeseUT);
    rs.SetField(QStringLiteral("dstChiusa"), r.dstChiusa);
}

std::optional<RigaDistinta> CercaRiga(Recordset &rs, std::int32_t codice, const QString &prg)
{
    if (!Trova(rs, codice, prg))
        return std::nullopt;
    return LeggiRiga(rs);
}

std::optional<Movimento> LeggiMovimento(Recordset &rs, std::int32_t codice)
{
    auto principale = CercaRiga(rs, codice, RigaPrincipale);
    if (!principale)
        return std::nullopt;
    return Movimento{*principale, CercaRiga(rs, codice, RigaGiro)};
}

QString CodiciDistinte04(const RigaDistinta &riga)
{
    QStringList codici;
    for (const QString &f : riga.dstCodP) {
        const QString codice = f.trimmed();
        if (!codice.isEmpty())
            codici.append(codice);
    }
    return codici.join(QLatin1Char(','));
}

bool AggiungiVisibile(const CampiMaschera &txt)
{
    if (txt.testo(CampoCodiceCliente).trimmed().isEmpty()
        || txt.testo(CampoCausale).trimmed().isEmpty())
        return false;
    for (int i = CampoPrimoProdotto; i <= CampoUltimoGiro; ++i) {
        if (!txt.testo(i).trimmed().isEmpty())
            return true;
    }
    return false;
}

Movimento MovimentoDaCampi(const CampiMaschera &txt, const QString &ditta,
                           const QString &banca, std::int32_t giorno, std::int32_t cliente)
{
    RigaDistinta r;
    r.dstDitta = TestoDaCampo(ditta);
    r.dstData = giorno;
    r.dstCliente = cliente;
    r.dstCausale = TestoDaCampo(txt.testo(CampoCausale));
    r.dstMoneta = TestoDaCampo(txt.testo(CampoMoneta));
    r.dstImporto = Numero(txt.testo(CampoImporto));
    r.dstAssegno = TestoDaCampo(txt.testo(CampoAssegno));
    r.dstBanca = TestoDaCampo(banca);
    r.dstSpeseUT = Numero(txt.testo(CampoSpese));
    r.dstChiusa = Blank;

    Movimento m;
    m.principale = r;
    RigaDistinta giro = r;
    giro.dstPrg = RigaGiro;
    for (int i = 0; i < FetteProdotto; ++i) {
        m.principale.dstCodP[i] = FettaSalvata(txt.testo(CampoPrimoProdotto + i));
        giro.dstCodP[i] = FettaSalvata(txt.testo(CampoPrimoGiro + i));
    }
    if (!giro.fetteVuote())
        m.giro = giro;
    return m;
}

void MovimentoNeiCampi(ControlloCampi &controllo, const Movimento &movimento)
{
    CampiMaschera &txt = controllo.txt;
    const RigaDistinta &r = movimento.principale;
    const QDate data = DataDaGiorno(r.dstData);
    txt.imposta(CampoGiorno, data.toString(QStringLiteral("dd")));
    txt.imposta(CampoMese, data.toString(QStringLiteral("MM")));
    txt.imposta(CampoAnno, data.toString(QStringLiteral("yyyy")));
    controllo.ClienteCorrente = r.dstCliente;
    CaricaCliente(r.dstCliente);
    txt.imposta(CampoCodiceCliente, QString::number(r.dstCliente));
    txt.imposta(CampoNomeCliente, Cli().Ragsoc);
    txt.imposta(CampoCausale, r.dstCausale.trimmed());
    controllo.ControllaCampo(CampoCausale);
    sessione().CodiceStop = 0;
    const auto codice = [](const QString &fetta) { return FettaSalvata(TagliaMarca(fetta)); };
    for (int i = 0; i < FetteProdotto; ++i) {
        txt.imposta(CampoPrimoProdotto + i, codice(r.dstCodP[i]));
        txt.imposta(CampoPrimoGiro + i,
                    movimento.giro ? codice(movimento.giro->dstCodP[i]) : Blank);
    }
    const QString moneta = r.dstMoneta.trimmed();
    txt.imposta(CampoMoneta, moneta);
    txt.imposta(CampoImporto, FormatoImporto(moneta, r.dstImporto));
    txt.imposta(CampoAssegno, r.dstAssegno.trimmed());
    txt.imposta(CampoSpese, FormatoImporto(moneta, r.dstSpeseUT, true));
}

std::int32_t ScriviInLavoro(Recordset &bk, Movimento movimento)
{
    std::int32_t codice = movimento.principale.dstCodice;
    if (codice == 0)
        codice = NuovoCodiceProvvisorio(bk);
    movimento.principale.dstCodice = codice;
    movimento.principale.dstPrg = RigaPrincipale;
    if (!ScriviRigaInTabella(bk, movimento.principale))
        return 0;
    if (movimento.giro) {
        movimento.giro->dstCodice = codice;
        movimento.giro->dstPrg = RigaGiro;
        if (!ScriviRigaInTabella(bk, *movimento.giro))
            return 0;
    } else if (Trova(bk, codice, RigaGiro) && !bk.Delete()) {
        // A changed movement may lose its second row.
        return 0;
    }
    return codice;
}

bool CancellaMovimento(Recordset &rs, std::int32_t codice)
{
    for (const QString &prg : {RigaPrincipale, RigaGiro}) {
        if (Trova(rs, codice, prg) && !rs.Delete())
            return false;
    }
    return true;
}

EsitoChiusa AggiornaChiusa(Recordset &distinte, std::int32_t codice)
{
    EsitoChiusa esito;
    QString nuovo = MovimentoChiuso;
    const bool giro = Trova(distinte, codice, RigaGiro);
    if (giro && !FetteChiuse(distinte))
        nuovo = Blank;
    if (!Trova(distinte, codice, RigaPrincipale))
        return esito;
    esito.vecchio = TestoDaCampo(distinte.Fields(QStringLiteral("dstChiusa")));
    if (!FetteChiuse(distinte))
        nuovo = Blank;
    esito.nuovo = nuovo;
    bool scritto = ScriviChiusa(distinte, nuovo);
    if (scritto && giro && Trova(distinte, codice, RigaGiro))
        scritto = ScriviChiusa(distinte, nuovo);
    if (!scritto) {
        esito.errore = distinte.Errore();
        distinte.CancelUpdate();
    }
    return esito;
}

} // namespace sorvane
