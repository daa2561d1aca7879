#include "store/Descrizioni.h"

#include "frame/core/Campi.h"
#include "store/Connessione.h"
#include "store/Schema.h"
#include "store/Tabelle.h"

namespace sorvane {

namespace {

// The search by description looks at no more than this many characters: a
// description typed in part, or cut by a narrower field, still finds its row.
constexpr int CaratteriConfrontati = 17;

void Prendi(const Recordset &rs)
{
    auto &t = tabelle();
    t.CodiceCercato = TestoDaCampo(rs.Fields(QStringLiteral("Codice")));
    t.DescrizioneCercata = TestoDaCampo(rs.Fields(QStringLiteral("Descrizione")));
}

} // namespace

void DescrizioneDaCodice(const QString &testo, std::uint8_t modo)
{
    auto &t = tabelle();
    t.CodiceCercato.clear();
    t.DescrizioneCercata.clear();
    ApriTabella(TabellaPerNome);
    if (!t.RsTabella.IsOpen())
        return;
    Recordset &rs = t.RsTabella;
    if (modo == 1) {
        rs.SetIndex(IndicePrimario);
        rs.Seek(QStringLiteral("="), testo);
        if (!rs.NoMatch())
            Prendi(rs);
        return;
    }
    rs.SetIndex(IndiceSecondario);
    rs.Seek(QStringLiteral(">="), testo);
    if (rs.NoMatch()) {
        t.ModoTabella = TabellaDaRiaprire;
        return;
    }
    const QString trovata = TestoDaCampo(rs.Fields(QStringLiteral("Descrizione")));
    if (trovata.left(CaratteriConfrontati)
            .compare(testo.left(CaratteriConfrontati), Qt::CaseInsensitive)
        == 0)
        Prendi(rs);
}

bool RiempiBuoniCattivi()
{
    struct Riga
    {
        const char *codice;
        const char *descrizione;
        int totalizzatore;
    };
    static const Riga righe[] = {
        {"0", "DA ESCLUDERE", 0},         {"1", "Redd.Fisso: Breve", 1},
        {"2", "Redd.Fisso: Medio", 1},    {"3", "Redd.Fisso: Lungo", 1},
        {"4", "Redd.Var.: G.P.F.", 2},    {"5", "Redd.Var.: Azionario", 2},
        {"6", "Redd.Var.: G.P.M.", 2},    {"7", "Polizze", 3},
        {"8", "Fondi Pensione", 3},       {"9", "Ripartito", 9},
    };
    Recordset rs = Recordset::Apri(DbDati(), QStringLiteral("TabBuoCat"), dbOpenTable);
    if (!rs.IsOpen())
        return false;
    for (const Riga &r : righe) {
        rs.AddNew();
        rs.SetField(QStringLiteral("Codice"), QString::fromUtf8(r.codice));
        rs.SetField(QStringLiteral("Descrizione"), QString::fromUtf8(r.descrizione));
        rs.SetField(QStringLiteral("Totalizzatore"), r.totalizzatore);
        if (!rs.Update())
            rs.CancelUpdate();
    }
    rs.Close();
    return true;
}

} // namespace sorvane
