#include "tables/Prodotti.h"

#include "frame/core/Giorni.h"
#include "frame/core/Messaggi.h"
#include "frame/core/Valore.h"
#include "store/Connessione.h"
#include "store/Descrizioni.h"
#include "store/Transazione.h"
#include "store/Motore.h"

#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>

namespace sorvane {

namespace {

QString Sql(const char *testo) { return QString::fromLatin1(testo); }

// A prepared query with its values bound, run; false on failure, with the
// engine's words in *motivo.
bool Esegui(QSqlQuery &q, const QString &sql, const QVariantList &valori,
            QString *motivo = nullptr)
{
    LetturaInAvanti(q);
    bool ok = q.prepare(sql);
    for (const QVariant &v : valori)
        q.addBindValue(v);
    ok = ok && q.exec();
    if (!ok && motivo)
        *motivo = TestoErroreSqlite(q.lastError());
    return ok;
}

// The first value of a query, invalid when there is no row.
QVariant Valore(const QString &sql, const QVariantList &valori)
{
    QSqlQuery q(Db());
    if (!Esegui(q, sql, valori) || !q.next())
        return {};
    return q.value(0);
}

// Text typed for a LIKE, its wildcards taken literally.
QString Letterale(const QString &testo)
{
    QString t = testo;
    t.replace(QLatin1Char('\\'), QStringLiteral("\\\\"));
    t.replace(QLatin1Char('%'), QStringLiteral("\\%"));
    t.replace(QLatin1Char('_'), QStringLiteral("\\_"));
    return t;
}

QVariant DataSalvata(const QVariant &v)
{
    return IsNumeric(v) && CDbl(v) > 0 ? QVariant(CDbl(v)) : Null();
}

const char *const CampiProdotto =
    "Codice, Descrizione, Categoria, Gruppo, Moneta, ISIN, Chiuso, EmissioneDat, "
    "EmissioneImp, AcquistoDat, AcquistoImp, ScadenzaDat, ScadenzaImp, Periodo, TipoPeriodo, "
    "AcqInvEff, BuoniCattivi, NoIndici, Tasso, Tassazione, Perc1, Perc2, Perc3, Perc4, "
    "PercSpese";

QVariantList ValoriProdotto(const Prodotto &p, const QString &codice)
{
    return {codice, p.Descrizione, p.Categoria, p.Gruppo, p.Moneta, p.ISIN,
            p.Chiuso.isEmpty() ? QStringLiteral(" ") : p.Chiuso, DataSalvata(p.EmissioneDat),
            p.EmissioneImp, DataSalvata(p.AcquistoDat), p.AcquistoImp,
            DataSalvata(p.ScadenzaDat), p.ScadenzaImp, p.Periodo, p.TipoPeriodo, p.AcqInvEff,
            p.BuoniCattivi, p.NoIndici, p.Tasso, p.Tassazione, p.Perc1, p.Perc2, p.Perc3,
            p.Perc4, p.PercSpese};
}

// The first index row: the purchase when it has a date, else the issue,
// else today at no value.
bool ScriviIndici(const Prodotto &p, const QString &codice, QString *motivo)
{
    QSqlQuery q(Db());
    if (p.NoIndici == 0
        && !Valore(Sql("SELECT 1 FROM Indici WHERE IndProdotto = ?"), {codice}).isValid()) {
        QVariant data = DataSalvata(p.AcquistoDat);
        double valore = p.AcquistoImp;
        if (IsNull(data)) {
            data = DataSalvata(p.EmissioneDat);
            valore = p.EmissioneImp;
        }
        if (IsNull(data)) {
            data = double(GiornoDaData(QDate::currentDate()));
            valore = 0;
        }
        if (!Esegui(q, Sql("INSERT INTO Indici (IndProdotto, IndData, IndValore, IndMoneta, "
                           "IndValoreMon) VALUES (?, ?, ?, ?, ?)"),
                    {codice, data, valore, p.Moneta, valore}, motivo))
            return false;
    }
    return Esegui(q, Sql("UPDATE Indici SET IndMoneta = ? WHERE IndProdotto = ?"),
                  {p.Moneta, codice}, motivo);
}

} // namespace

const QList<ColonnaProdotti> &ColonneProdotti()
{
    static const QList<ColonnaProdotti> colonne = {
        {QStringLiteral("CODICE"), QStringLiteral("Codice")},
        {QStringLiteral("DESCRIZIONE"), QStringLiteral("Descrizione")},
        {QStringLiteral("CATEGORIA"), QStringLiteral("Categoria")},
        {QStringLiteral("Ip"), QStringLiteral("NoIndici")},
        {QStringLiteral("Ic"), QStringLiteral("Tipo")},
        {QStringLiteral("G"), QStringLiteral("Gruppo")},
        {QStringLiteral("MON"), QStringLiteral("Moneta")},
        {QStringLiteral("BC"), QStringLiteral("BuoniCattivi")},
        {QStringLiteral("% Gest."), QStringLiteral("Perc1")},
        {QStringLiteral("% Prom."), QStringLiteral("Perc2")},
        {QStringLiteral("% Tot."), QStringLiteral("YPercTot"), false},
        {QStringLiteral("% Gest."), QStringLiteral("Perc3")},
        {QStringLiteral("% Prom."), QStringLiteral("Perc4")},
        {QStringLiteral("% Tot."), QStringLiteral("ZPercTot"), false},
        {QStringLiteral("Colore"), QStringLiteral("Colore")},
    };
    return colonne;
}

Interrogazione SqlElencoProdotti(const RicercaProdotti &r)
{
    Interrogazione i;
    i.sql = Sql("SELECT TabProdotti.Codice, TabProdotti.Descrizione, TabProdotti.Categoria, "
                "TabProdotti.NoIndici, TabCategorie.Tipo, TabProdotti.Gruppo, "
                "TabProdotti.Moneta, TabProdotti.BuoniCattivi, TabProdotti.Perc1, "
                "TabProdotti.Perc2, TabProdotti.Perc1 * TabProdotti.Perc2 / 100 AS YPercTot, "
                "TabProdotti.Perc3, TabProdotti.Perc4, "
                "TabProdotti.Perc3 * TabProdotti.Perc4 / 100 AS ZPercTot, TabCategorie.Colore "
                "FROM TabProdotti INNER JOIN TabCategorie "
                "ON TabProdotti.Categoria = TabCategorie.Codice");
    if (r.perDescrizione) {
        i.sql += Sql(" WHERE TabProdotti.Descrizione LIKE ? ESCAPE '\\'");
        i.parametri.append(QLatin1Char('%') + Letterale(r.testo) + QLatin1Char('%'));
    } else {
        i.sql += Sql(" WHERE TabProdotti.Codice LIKE ? ESCAPE '\\'");
        i.parametri.append(Letterale(r.testo) + QLatin1Char('%'));
    }
    if (!r.chiusi)
        i.sql += Sql(" AND TabProdotti.NoIndici < 2");
    const QList<ColonnaProdotti> &colonne = ColonneProdotti();
    const int c = r.colonna >= 0 && r.colonna < colonne.size() && colonne[r.colonna].ordinabile
                      ? r.colonna : ProdCodice;
    const QString campo = colonne[c].campo;
    i.sql += c == ProdCodice || c == ProdBuoniCattivi || c == ProdDescrizione
                 ? Sql(" ORDER BY TabProdotti.") + campo : Sql(" ORDER BY ") + campo;
    i.sql += r.ascendente ? Sql(" ASC") : Sql(" DESC");
    return i;
}

QString IndiciMostrato(const QVariant &noIndici)
{
    switch (int(CDbl(noIndici))) {
    case 0: return QStringLiteral("S");
    case 1: return QStringLiteral("N");
    case 2: return QStringLiteral("C");
    default: return {};
    }
}

QString TipoMostrato(const QVariant &tipo)
{
    const QString t = tipo.toString().trimmed().toUpper();
    if (t == QLatin1String("S"))
        return QStringLiteral("N");
    if (t == QLatin1String("N"))
        return QStringLiteral("S");
    return t;
}

std::optional<Prodotto> LeggiProdotto(const QString &codice)
{
    QSqlQuery q(Db());
    if (!Esegui(q, Sql("SELECT ") + Sql(CampiProdotto) + Sql(" FROM TabProdotti WHERE Codice = ?"),
                {codice.trimmed()})
        || !q.next())
        return std::nullopt;
    auto t = [&q](int i) { return q.value(i).isNull() ? QString() : q.value(i).toString(); };
    auto n = [&q](int i) { return CDbl(q.value(i)); };
    Prodotto p;
    p.Codice = t(0).trimmed();
    p.Descrizione = t(1);
    p.Categoria = t(2).trimmed();
    p.Gruppo = t(3).trimmed();
    p.Moneta = t(4).trimmed();
    p.ISIN = t(5).trimmed();
    p.Chiuso = t(6);
    p.EmissioneDat = DataSalvata(q.value(7));
    p.EmissioneImp = n(8);
    p.AcquistoDat = DataSalvata(q.value(9));
    p.AcquistoImp = n(10);
    p.ScadenzaDat = DataSalvata(q.value(11));
    p.ScadenzaImp = n(12);
    p.Periodo = int(n(13));
    p.TipoPeriodo = int(n(14));
    p.AcqInvEff = int(n(15));
    p.BuoniCattivi = int(n(16));
    p.NoIndici = int(n(17));
    p.Tasso = n(18);
    p.Tassazione = n(19);
    p.Perc1 = n(20);
    p.Perc2 = n(21);
    p.Perc3 = n(22);
    p.Perc4 = n(23);
    p.PercSpese = n(24);
    return p;
}

bool EsisteProdotto(const QString &codice)
{
    return Valore(Sql("SELECT 1 FROM TabProdotti WHERE Codice = ?"), {codice.trimmed()})
        .isValid();
}

QVariant DataDaParti(const QString &giorno, const QString &mese, const QString &anno)
{
    const QString testo = giorno.trimmed() + QLatin1Char('/') + mese.trimmed() + QLatin1Char('/')
                          + anno.trimmed();
    const std::optional<QDate> d = LeggiData(testo);
    return d ? QVariant(double(GiornoDaData(*d))) : Null();
}

QString ControllaDataProdotto(int gruppo, int parte, const QString &giorno, const QString &mese,
                              const QString &anno)
{
    static const char *const nomi[] = {"EMISSIONE", "ACQUISTO", "SCADENZA"};
    const QString nome = QString::fromLatin1(nomi[qBound(0, gruppo, 2)]);
    const QString &campo = parte == 0 ? giorno : mese;
    if (parte < 2) {
        const QString t = campo.trimmed();
        const int v = t.toInt();
        // A blank or zero part stands for no date, told as a whole.
        if (t.isEmpty() || v == 0)
            return {};
        const int massimo = parte == 0 ? 31 : 12;
        if (v < 1 || v > massimo)
            return (parte == 0 ? QStringLiteral("GIORNO ") : QStringLiteral("MESE ")) + nome
                   + QStringLiteral(" ERRATO");
        return {};
    }
    const QString testo = giorno.trimmed() + QLatin1Char('/') + mese.trimmed() + QLatin1Char('/')
                          + anno.trimmed();
    if (testo == QLatin1String("00/00/0000") || testo == QLatin1String("//") || IsDate(testo))
        return {};
    return QStringLiteral("DATA ") + nome + QStringLiteral(" ERRATA");
}

QString ControllaPeriodo(int periodo, int tipoPeriodo, const QString &tipoTesto)
{
    if (tipoPeriodo <= 0 && periodo > 0)
        return QStringLiteral("Indicare il tipo periodo");
    if (tipoPeriodo > 0 && periodo <= 0)
        return QStringLiteral("Indicare quanti ") + tipoTesto;
    return {};
}

QList<Quota> LeggiQuote(const QString &prodotto)
{
    QList<Quota> quote;
    QSqlQuery q(Db());
    if (Esegui(q, Sql("SELECT MpCategoria, MpPercentuale FROM TabMultiPartner "
                      "WHERE MpProdotto = ? ORDER BY MpCategoria"),
               {prodotto.trimmed()}))
        while (q.next())
            quote.append({q.value(0).toString().trimmed(), CDbl(q.value(1))});
    return quote;
}

double TotaleQuote(const QList<Quota> &quote)
{
    double totale = 0;
    for (const Quota &q : quote)
        totale += q.percentuale;
    return totale;
}

bool EsisteCategoria(const QString &codice)
{
    return BuoniCattiviCategoria(codice) >= 0;
}

int BuoniCattiviCategoria(const QString &codice)
{
    const QVariant v = Valore(Sql("SELECT BuoniCattivi FROM TabCategorie WHERE Codice = ?"),
                              {codice.trimmed()});
    return v.isValid() ? int(CDbl(v)) : -1;
}

bool ConfermaRipartizione(int buoniCattivi, double totale)
{
    // Compared as the label shows it, to the hundredth.
    const qint64 centesimi = qRound64(totale * 100);
    const bool ripartito = buoniCattivi == BuoniCattiviRipartito;
    if (centesimi == (ripartito ? 10000 : 0))
        return true;
    return Messaggio(ripartito ? QStringLiteral("PERCENTUALE RIPARTIZIONE NON = 100%")
                               : QStringLiteral("PERCENTUALE RIPARTIZIONE NON = 0%"),
                     QStringLiteral("RIPARTIZIONE ERRATA"), Icona::Esclamazione,
                     Pulsanti::OkAnnulla)
           == Risposta::Ok;
}

QString ControllaNuovoCodice(const QString &codice)
{
    if (codice.trimmed().isEmpty())
        return QStringLiteral("INDICARE IL NUOVO CODICE");
    if (EsisteProdotto(codice))
        return QStringLiteral("NUOVO CODICE GIA' ESISTENTE");
    return {};
}

bool RegistraProdottoEsportato(const QString &codice, QString *motivo)
{
    QSqlQuery q(Db());
    if (!Esegui(q, Sql("SELECT riga, Codice FROM TabProdExpo ORDER BY riga"), {}, motivo))
        return false;
    int righe = 0;
    int ultima = 0;
    while (q.next()) {
        if (q.value(1).toString().trimmed().compare(codice.trimmed(), Qt::CaseInsensitive) == 0)
            return true;
        ultima = std::max(ultima, q.value(0).toInt());
        ++righe;
    }
    if (righe >= MassimoProdottiEsportati)
        return true;
    QSqlQuery w(Db());
    return Esegui(w, Sql("INSERT INTO TabProdExpo (riga, Codice, Colonna) VALUES (?, ?, 0)"),
                  {ultima + 1, codice.trimmed()}, motivo);
}

QString SalvaProdotto(const Prodotto &p, const QList<Quota> &quote, const QString &nuovoCodice)
{
    const bool duplica = !nuovoCodice.trimmed().isEmpty();
    const QString codice = duplica ? nuovoCodice.trimmed() : p.Codice.trimmed();
    const QString frase =
        QStringLiteral("IL PRODOTTO %1 NON E' STATO REGISTRATO.").arg(codice);
    Transazione t;
    if (!t.attiva())
        return TestoGuasto(frase, t.errore());
    QString motivo;
    QSqlQuery q(Db());
    const QVariantList valori = ValoriProdotto(p, codice);
    bool ok;
    if (!duplica && EsisteProdotto(codice)) {
        QString assegna = QString::fromLatin1(CampiProdotto).mid(8); // past "Codice, "
        assegna.replace(QStringLiteral(", "), QStringLiteral(" = ?, "));
        ok = Esegui(q, Sql("UPDATE TabProdotti SET ") + assegna + Sql(" = ? WHERE Codice = ?"),
                    valori.mid(1) + QVariantList{codice}, &motivo);
    } else {
        QStringList segni;
        for (int i = 0; i < valori.size(); ++i)
            segni.append(QStringLiteral("?"));
        ok = Esegui(q, Sql("INSERT INTO TabProdotti (") + Sql(CampiProdotto) + Sql(") VALUES (")
                           + segni.join(QStringLiteral(", ")) + QLatin1Char(')'),
                    valori, &motivo);
    }
    QSqlQuery c(Db());
    ok = ok && Esegui(c, Sql("DELETE FROM TabMultiPartner WHERE MpProdotto = ?"), {codice},
                      &motivo);
    for (const Quota &quota : quote)
        ok = ok && Esegui(c, Sql("INSERT INTO TabMultiPartner (MpProdotto, MpCategoria, "
                                 "MpPercentuale) VALUES (?, ?, ?)"),
                          {codice, quota.categoria, quota.percentuale}, &motivo);
    ok = ok && (!duplica || RegistraProdottoEsportato(codice, &motivo));
    ok = ok && ScriviIndici(p, codice, &motivo);
    if (!ok)
        return TestoGuasto(frase, motivo);
    return t.conferma() ? QString() : TestoGuasto(frase, t.errore());
}

EsitoEliminazione EliminaProdotto(const QString &codice)
{
    const QString c = codice.trimmed();
    if (!EsisteProdotto(c))
        return EsitoEliminazione::Tenuto;
    if (Messaggio(QStringLiteral("ELIMINO IL CODICE ") + c + QStringLiteral(" ?"),
                  QStringLiteral("ELIMINAZIONE RECORD"), Icona::Domanda, Pulsanti::SiNo, 1)
        != Risposta::Si)
        return EsitoEliminazione::Tenuto;
    if (Messaggio(QStringLiteral("CONFERMI LA CANCELLAZIONE DEI SUOI MANDATI  "
                                 "E DEI LORO MOVIMENTI?"),
                  NomeProgrammaMaiuscolo() + QStringLiteral(" -CANCELLAZIONE"), Icona::Domanda,
                  Pulsanti::SiNo)
        != Risposta::Si)
        return EsitoEliminazione::Tenuto;
    // The mandates' rows first, while the mandates still name the product.
    static const char *const passi[] = {
        "DELETE FROM Movimenti WHERE MovMandato IN "
        "(SELECT ManMandato FROM Mandati WHERE ManProdotto = ?)",
        "DELETE FROM Cointestatari WHERE CoMandato IN "
        "(SELECT ManMandato FROM Mandati WHERE ManProdotto = ?)",
        "DELETE FROM Mandati WHERE ManProdotto = ?",
        "DELETE FROM TabMultiPartner WHERE MpProdotto = ?",
        "DELETE FROM TabProdotti WHERE Codice = ?",
    };
    Transazione t;
    QString motivo = t.errore();
    bool ok = t.attiva();
    for (const char *passo : passi) {
        QSqlQuery q(Db());
        ok = ok && Esegui(q, Sql(passo), {c}, &motivo);
    }
    ok = ok && t.conferma();
    if (!ok) {
        if (motivo.isEmpty())
            motivo = t.errore();
        t.annulla();
        Messaggio(TestoGuasto(QStringLiteral("ERRORE IN CANCELLAZIONE: non cancello"), motivo),
                  NomeProgrammaMaiuscolo(), Icona::Stop);
        return EsitoEliminazione::Guasto;
    }
    return EsitoEliminazione::Eliminato;
}

std::optional<QList<VoceCombo>> VociBuoniCattivi()
{
    const QString sql = Sql("SELECT Codice, Descrizione FROM TabBuoCat ORDER BY Codice");
    QSqlQuery q(Db());
    if (!Esegui(q, sql, {}))
        return std::nullopt;
    if (!q.next()) {
        if (!RiempiBuoniCattivi())
            return std::nullopt;
        if (!Esegui(q, sql, {}) || !q.next())
            return std::nullopt;
    }
    QList<VoceCombo> voci;
    do
        voci.append({q.value(0).toString().trimmed(),
                     q.value(0).toString().trimmed() + QStringLiteral(" - ")
                         + q.value(1).toString().trimmed()});
    while (q.next());
    return voci;
}

std::optional<QList<VoceCombo>> VociCategorie()
{
    QList<VoceCombo> voci;
    QSqlQuery q(Db());
    if (!Esegui(q, Sql("SELECT Codice FROM TabCategorie ORDER BY Codice"), {}))
        return std::nullopt;
    while (q.next())
        voci.append({q.value(0).toString().trimmed(), q.value(0).toString().trimmed()});
    return voci;
}

std::optional<QList<VoceCombo>> VociGruppi()
{
    QList<VoceCombo> voci;
    QSqlQuery q(Db());
    if (!Esegui(q, Sql("SELECT GrpCodice, GrpDescrizione FROM TabGruppi ORDER BY GrpCodice"),
                {}))
        return std::nullopt;
    while (q.next())
        voci.append({q.value(0).toString().trimmed(),
                     q.value(0).toString().trimmed() + QStringLiteral(" - ")
                         + q.value(1).toString().trimmed()});
    return voci;
}

QString DescrizioneGruppo(const QString &codice)
{
    const QVariant v = Valore(Sql("SELECT GrpDescrizione FROM TabGruppi WHERE GrpCodice = ?"),
                              {codice.trimmed()});
    const QString d = v.isValid() ? v.toString().trimmed() : QString();
    return d.isEmpty() ? QStringLiteral("******") : d;
}

} // namespace sorvane
