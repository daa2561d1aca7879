#include "tables/ElencoCodici.h"

#include "frame/core/Campi.h"
#include "frame/core/Messaggi.h"
#include "store/Schema.h"
#include "store/Tabelle.h"
#include "store/Transazione.h"

#include <algorithm>

namespace sorvane {

namespace {

const QString Codice = QStringLiteral("Codice");
const QString Descrizione = QStringLiteral("Descrizione");

int Larghezza(const QString &nomeTabella, const QString &campo, int predefinita)
{
    const Tabella *t = TrovaTabella(nomeTabella);
    const Colonna *c = t ? t->colonna(campo) : nullptr;
    return c && c->larghezza > 0 ? c->larghezza : predefinita;
}

QString Incolonna(const QString &testo, int larghezza)
{
    return testo.leftJustified(larghezza, QLatin1Char(' '), true);
}

} // namespace

LarghezzeCodici LarghezzeCampi(const QString &nomeTabella)
{
    return {Larghezza(nomeTabella, Codice, 10), Larghezza(nomeTabella, Descrizione, 40)};
}

LarghezzeCodici LarghezzeTabella(const QString &nomeTabella)
{
    const LarghezzeCodici l = LarghezzeCampi(nomeTabella);
    return {std::min(l.codice, 10), std::min(l.descrizione, 40)};
}

QString TitoloTabella(const QString &nomeTabella)
{
    return QStringLiteral("GESTIONE ") + nomeTabella.mid(3);
}

QList<RigaElenco> RiempiLista(const QString &testo, std::uint8_t modo,
                              const LarghezzeCodici &larghezze, std::int16_t *risposta)
{
    auto &t = tabelle();
    const QString campo = modo == ElencoPerDescrizione ? Descrizione : Codice;
    const QString fino = testo.trimmed().isEmpty() ? QString() : testo;
    t.StringaSql = QStringLiteral("SELECT * FROM %1 WHERE %2 BETWEEN ? and ? ORDER BY %2")
                       .arg(t.NomeTabella, campo);
    t.ParametriSql = {testo, fino + QStringLiteral("zzz")};
    ApriTabella(TabellaDaSql);
    QList<RigaElenco> righe;
    if (!t.RsTabella.IsOpen())
        return righe;
    for (Recordset &rs = t.RsTabella; !rs.Eof(); rs.MoveNext()) {
        if (righe.size() >= RigheSenzaDomanda) {
            if (*risposta == 0)
                *risposta = std::int16_t(Messaggio(
                    QStringLiteral("OLTRE 300 ELEMENTI: ESTRAGGO TUTTO?"),
                    QStringLiteral("ELENCO LUNGO"), Icona::Domanda, Pulsanti::SiNo));
            // Only a Yes extracts the rest; a box nobody answers keeps the 300.
            if (*risposta != std::int16_t(Risposta::Si))
                break;
        }
        RigaElenco r;
        r.codice = TestoDaCampo(rs.Fields(Codice)).trimmed();
        r.descrizione = TestoDaCampo(rs.Fields(Descrizione)).trimmed();
        const QString c = Incolonna(r.codice, larghezze.codice);
        const QString d = Incolonna(r.descrizione, larghezze.descrizione);
        r.testo = modo == ElencoPerDescrizione ? d + QStringLiteral(" - ") + c
                                               : c + QStringLiteral(" - ") + d;
        righe.append(r);
    }
    ChiudiTabella();
    return righe;
}

PulsantiElenco AggiornaPulsanti(int righe, const QString &testo, bool soloScelta)
{
    const bool scritto = !testo.trimmed().isEmpty();
    if (righe == 0)
        return {false, scritto && !soloScelta ? Inserisci : QString()};
    if (righe == 1)
        return scritto ? PulsantiElenco{true, Gestisci} : PulsantiElenco{false, Seleziona};
    return {false, Seleziona};
}

namespace {

// RsTabella on NomeTabella at the row of codice (NoMatch when none).
Recordset &Posiziona(const QString &codice)
{
    ApriTabella(TabellaPerNome);
    Recordset &rs = tabelle().RsTabella;
    if (rs.IsOpen()) {
        rs.SetIndex(IndicePrimario);
        rs.Seek(QStringLiteral("="), codice);
    }
    return rs;
}

} // namespace

QString SalvaCodice(const QString &codice, const QString &descrizione)
{
    const QString frase = QStringLiteral("IL CODICE %1 NON E' STATO REGISTRATO.").arg(codice.trimmed());
    Transazione t;
    if (!t.attiva())
        return TestoGuasto(frase, t.errore());
    Recordset &rs = Posiziona(codice);
    if (!rs.IsOpen())
        return {}; // told by the opener
    bool ok = rs.NoMatch() ? rs.AddNew() : rs.Edit();
    ok = ok && rs.SetField(Codice, codice) && rs.SetField(Descrizione, descrizione)
         && rs.Update();
    const QString motivo = rs.Errore();
    if (!ok)
        rs.CancelUpdate();
    ChiudiTabella();
    if (!ok)
        return TestoGuasto(frase, motivo);
    return t.conferma() ? QString() : TestoGuasto(frase, t.errore());
}

QString EliminaCodice(const QString &codice)
{
    Recordset &rs = Posiziona(codice);
    if (!rs.IsOpen() || rs.NoMatch()) {
        ChiudiTabella();
        return {};
    }
    if (Messaggio(QStringLiteral("Elimino il codice ") + codice + QStringLiteral(" ?"),
                  QStringLiteral("ELIMINAZIONE RECORD"), Icona::Esclamazione, Pulsanti::SiNo, 1)
        != Risposta::Si) {
        ChiudiTabella();
        return {};
    }
    const QString frase = QStringLiteral("IL CODICE %1 NON E' STATO ELIMINATO.").arg(codice.trimmed());
    Transazione t;
    const bool ok = t.attiva() && rs.Delete();
    const QString motivo = t.attiva() ? rs.Errore() : t.errore();
    ChiudiTabella();
    if (!ok)
        return TestoGuasto(frase, motivo);
    return t.conferma() ? QString() : TestoGuasto(frase, t.errore());
}

} // namespace sorvane
