#include "store/Tabelle.h"

#include "frame/core/Messaggi.h"
#include "frame/core/Sessione.h"
#include "store/Connessione.h"
#include "store/Schema.h"

namespace sorvane {

namespace {

const QString TitoloErrore = QStringLiteral("ERRORE APERTURA TABELLA");

// Asks Retry or Cancel about the failure of rs; true for Retry. Cancel is
// the default: a box that nobody answers (one that cannot be shown while
// the program ends, or no window system at all) never tries again, or the
// opener would spin for ever.
bool Riprovare(const Recordset &rs, const QString &testoErrore)
{
    sessione().TestoErrore = testoErrore + QLatin1Char('\n') + QString::number(rs.NumeroErrore())
                             + QStringLiteral(": ") + rs.Errore();
    return Messaggio(sessione().TestoErrore, TitoloErrore, Icona::Esclamazione,
                     Pulsanti::RiprovaAnnulla, 1)
           == Risposta::Riprova;
}

// With the databases released (the program is ending) no table opens and
// no Retry could change that, nor is a window left to ask in: the opener
// gives up at once, its flag down, without a word.
bool Rilasciati(const QString &testoErrore)
{
    if (Db().isOpen())
        return false;
    sessione().TestoErrore = testoErrore;
    return true;
}

void ApriDistinteIn(Recordset &rs, const QString &tabella, const QString &testoErrore)
{
    // The frame does not show the screen when its slips can't be read.
    const bool aperto = ApriConRiprova(rs, tabella, testoErrore, true);
    sessione().CodiceStop = aperto ? 0 : 9;
}

} // namespace

TabelleCondivise &tabelle()
{
    static TabelleCondivise t;
    return t;
}

bool ApriConRiprova(Recordset &rs, const QString &tabella, const QString &testoErrore,
                    bool primaria)
{
    if (Rilasciati(testoErrore)) {
        rs.Close();
        return false;
    }
    for (;;) {
        rs = Recordset::Apri(Db(), tabella, dbOpenTable);
        if (rs.IsOpen()) {
            if (primaria)
                rs.SetIndex(IndicePrimario);
            return true;
        }
        if (!Riprovare(rs, testoErrore))
            return false;
    }
}

void ApriClienti()
{
    auto &t = tabelle();
    t.ClientiAperto =
        ApriConRiprova(t.RsClienti, QStringLiteral("Clienti"),
                       QStringLiteral("ERRORE IN APERTURA ARCHIVIO 'CLIENTI'"), true);
}

void ChiudiClienti()
{
    auto &t = tabelle();
    t.RsClienti.Close();
    t.ClientiAperto = false;
}

void ApriColori()
{
    auto &t = tabelle();
    t.ColoriAperto = ApriConRiprova(t.RsColori, QStringLiteral("Colori"),
                                    QStringLiteral("ERRORE IN APERTURA TABELLA 'COLORI'"), true);
}

void ApriColoriGrp()
{
    auto &t = tabelle();
    t.ColoriGrpAperto = ApriConRiprova(t.RsColoriGrp, QStringLiteral("ColoriGrp"),
                                       QStringLiteral("ERRORE IN APERTURA TABELLA 'COLORIGRP'"),
                                       true);
}

void ApriDistinte()
{
    ApriDistinteIn(tabelle().RsDistinte, QStringLiteral("Distinte"),
                   QStringLiteral("ERRORE IN APERTURA ARCHIVIO 'DISTINTE'"));
}

void ApriDistinte04()
{
    ApriDistinteIn(tabelle().RsDistinte04, QStringLiteral("Distinte04"),
                   QStringLiteral("ERRORE IN APERTURA ARCHIVIO 'DISTINTE04'"));
}

void ApriArchivio(const QString &nome, const QString &testoErrore)
{
    auto &t = tabelle();
    t.ArchivioAperto = ApriConRiprova(t.RsArchivio, nome,
                                      QStringLiteral("ERRORE IN APERTURA ARCHIVIO ") + testoErrore,
                                      false);
}

void ApriTabella(std::uint8_t modo)
{
    auto &t = tabelle();
    if (t.ModoTabella == modo)
        return;
    if (t.ModoTabella >= 1 && t.ModoTabella <= 98)
        ChiudiTabella();
    const QVariantList parametri = t.ParametriSql;
    if (modo == TabellaDaSql)
        t.ParametriSql.clear();
    if (Rilasciati(QStringLiteral("ERRORE IN APERTURA TABELLA ") + t.NomeTabella)) {
        t.ModoTabella = TabellaChiusa;
        return;
    }
    for (;;) {
        t.ModoTabella = modo;
        if (modo == TabellaPerNome)
            t.RsTabella = Recordset::Apri(Db(), t.NomeTabella, dbOpenTable);
        else if (modo == TabellaDaSql)
            t.RsTabella = Recordset::Apri(Db(), t.StringaSql, dbOpenSnapshot, parametri);
        else
            return;
        if (t.RsTabella.IsOpen())
            return;
        t.ModoTabella = TabellaChiusa;
        if (!Riprovare(t.RsTabella, QStringLiteral("ERRORE IN APERTURA TABELLA ") + t.NomeTabella))
            return;
    }
}

void ChiudiTabella()
{
    auto &t = tabelle();
    t.RsTabella.Close();
    t.ModoTabella = TabellaChiusa;
}

void ChiudiTutteLeTabelle()
{
    auto &t = tabelle();
    ChiudiClienti();
    ChiudiTabella();
    for (Recordset *rs : {&t.RsColori, &t.RsColoriGrp, &t.RsDistinte, &t.RsDistinte04,
                          &t.RsArchivio})
        rs->Close();
    t.ColoriAperto = t.ColoriGrpAperto = t.ArchivioAperto = false;
}

} // namespace sorvane
