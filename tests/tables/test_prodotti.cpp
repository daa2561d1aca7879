// The product master's rules on real files: the list's query, the checks,
// the save with its shares and index rows, the duplicate, the delete.

#include "ProvaProdotti.h"

#include "frame/core/Valore.h"
#include "store/Schema.h"

#include <QSqlQuery>

namespace sorvane::prova {
namespace {

using RegoleProdotti = ProvaProdotti;

QStringList Elenco(const RicercaProdotti &r)
{
    const Interrogazione i = SqlElencoProdotti(r);
    QSqlQuery q(Db());
    q.prepare(i.sql);
    for (const QVariant &v : i.parametri)
        q.addBindValue(v);
    EXPECT_TRUE(q.exec()) << qPrintable(i.sql);
    QStringList codici;
    while (q.next())
        codici << q.value(ProdCodice).toString();
    return codici;
}

TEST_F(RegoleProdotti, ElencoSenzaCategoriaSconosciutaNeChiusi)
{
    EXPECT_EQ(Elenco({}), QStringList{"BTP01"});
    EXPECT_EQ(Elenco({.chiusi = true}), (QStringList{"BTP01", "BTP02"}));
    EXPECT_EQ(Elenco({.testo = "btp0", .chiusi = true, .ascendente = false}),
              (QStringList{"BTP02", "BTP01"}));
    EXPECT_EQ(Elenco({.testo = "TP0"}), QStringList{});
    // The description matches anywhere; quotes and wildcards are plain text.
    EXPECT_EQ(Elenco({.testo = "L'ITALIA", .perDescrizione = true}), QStringList{"BTP01"});
    EXPECT_EQ(Elenco({.testo = "L''", .perDescrizione = true}), QStringList{});
    EXPECT_EQ(Elenco({.testo = "%", .perDescrizione = true}), QStringList{});
    // A column that can't be sorted leaves the order by code.
    EXPECT_EQ(Elenco({.chiusi = true, .colonna = ProdYPercTot, .ascendente = false}),
              (QStringList{"BTP02", "BTP01"}));
    EXPECT_EQ(IndiciMostrato(2), "C");
    EXPECT_EQ(TipoMostrato("S"), "N");
}

TEST_F(RegoleProdotti, RipartizioneEControlli)
{
    EXPECT_TRUE(ConfermaRipartizione(BuoniCattiviRipartito, 60.0 + 40.0));
    EXPECT_TRUE(ConfermaRipartizione(1, 0));
    EXPECT_TRUE(m_messaggi.testi().isEmpty());
    m_messaggi.rispondi(Risposta::Annulla);
    EXPECT_FALSE(ConfermaRipartizione(BuoniCattiviRipartito, 99.99));
    m_messaggi.rispondi(Risposta::Ok);
    EXPECT_TRUE(ConfermaRipartizione(1, 10));
    EXPECT_EQ(m_messaggi.testi(), (QStringList{"PERCENTUALE RIPARTIZIONE NON = 100%",
                                               "PERCENTUALE RIPARTIZIONE NON = 0%"}));
    EXPECT_EQ(m_messaggi.richieste()[0].titolo, "RIPARTIZIONE ERRATA");

    EXPECT_EQ(ControllaDataProdotto(0, 2, "00", "00", "0000"), "");
    EXPECT_EQ(ControllaDataProdotto(0, 2, "", "", ""), "");
    EXPECT_EQ(ControllaDataProdotto(0, 2, "31", "02", "2024"), "DATA EMISSIONE ERRATA");
    EXPECT_EQ(ControllaDataProdotto(1, 0, "32", "", ""), "GIORNO ACQUISTO ERRATO");
    EXPECT_EQ(ControllaDataProdotto(2, 1, "1", "13", ""), "MESE SCADENZA ERRATO");
    EXPECT_TRUE(IsNull(DataDaParti("00", "00", "0000")));
    EXPECT_EQ(ControllaPeriodo(3, 0, ""), "Indicare il tipo periodo");
    EXPECT_EQ(ControllaPeriodo(0, 2, "mesi"), "Indicare quanti mesi");
    EXPECT_EQ(ControllaPeriodo(6, 2, "mesi"), "");
}

TEST_F(RegoleProdotti, SalvaConQuoteIndiciEDataNulla)
{
    Prodotto p = *LeggiProdotto("BTP01");
    p.EmissioneDat = DataDaParti("00", "00", "0000");
    p.AcquistoDat = DataDaParti("10", "01", "2024");
    p.AcquistoImp = 98.5;
    ASSERT_EQ(SalvaProdotto(p, {{"OBB", 30}}), "");
    EXPECT_EQ(Righe("SELECT CASE WHEN EmissioneDat IS NULL THEN 1 ELSE 0 END, AcquistoDat "
                    "FROM TabProdotti WHERE Codice = 'BTP01'"),
              QStringList{"1|45301"});
    EXPECT_EQ(Righe("SELECT IndData, IndValore, IndMoneta FROM Indici"),
              QStringList{"45301|98.5|EUR"});
    Scrivi("INSERT INTO Indici VALUES ('BTP01', 45400, 99, 99, 'EUR')");
    p.Moneta = "USD";
    ASSERT_EQ(SalvaProdotto(p, {}), "");
    EXPECT_EQ(Righe("SELECT DISTINCT IndMoneta FROM Indici WHERE IndProdotto = 'BTP01'"),
              QStringList{"USD"});
    EXPECT_EQ(Conta("SELECT COUNT(*) FROM TabMultiPartner"), 0);
}

TEST_F(RegoleProdotti, DuplicaCopiaQuoteEListaEsportataFinoA200)
{
    Prodotto p = *LeggiProdotto("BTP01");
    EXPECT_EQ(ControllaNuovoCodice(" "), "INDICARE IL NUOVO CODICE");
    EXPECT_EQ(ControllaNuovoCodice("BTP02"), "NUOVO CODICE GIA' ESISTENTE");
    ASSERT_EQ(SalvaProdotto(p, {{"OBB", 60}, {"MULTI", 40}}, "BTP09"), "");
    EXPECT_EQ(Righe("SELECT MpProdotto, MpCategoria, MpPercentuale FROM TabMultiPartner "
                    "ORDER BY MpCategoria"),
              (QStringList{"BTP09|MULTI|40", "BTP09|OBB|60"}));
    EXPECT_EQ(Righe("SELECT riga, Codice FROM TabProdExpo"), QStringList{"1|BTP09"});
    EXPECT_EQ(Righe("SELECT Descrizione FROM TabProdotti WHERE Codice = 'BTP09'"),
              QStringList{"BTP L'ITALIA 2030"});
    Transazione t;
    for (int i = 2; i <= MassimoProdottiEsportati; ++i)
        ASSERT_TRUE(RegistraProdottoEsportato(QStringLiteral("X%1").arg(i)));
    ASSERT_TRUE(RegistraProdottoEsportato("BTP01"));
    ASSERT_TRUE(t.conferma());
    EXPECT_EQ(Conta("SELECT COUNT(*) FROM TabProdExpo"), MassimoProdottiEsportati);
    EXPECT_EQ(Conta("SELECT COUNT(*) FROM TabProdExpo WHERE Codice = 'BTP01'"), 0);
}

TEST_F(RegoleProdotti, BuoniCattiviRiempitiQuandoVuoti)
{
    Scrivi("DELETE FROM TabBuoCat");
    const std::optional<QList<VoceCombo>> voci = VociBuoniCattivi();
    ASSERT_TRUE(voci);
    ASSERT_EQ(voci->size(), 10);
    EXPECT_EQ(voci->at(0).testo, "0 - DA ESCLUDERE");
    EXPECT_EQ(voci->at(9).testo, "9 - Ripartito");
    EXPECT_EQ(DescrizioneGruppo("B"), "BILANCIATI");
    EXPECT_EQ(DescrizioneGruppo("Z"), "******");
}

class EliminaProdotti : public ProvaProdotti
{
protected:
    void SetUp() override
    {
        ProvaProdotti::SetUp();
        Scrivi("INSERT INTO Mandati VALUES ('M1', 'BTP01')");
        Scrivi("INSERT INTO Mandati VALUES ('M2', 'BTP02')");
        Scrivi("INSERT INTO Cointestatari VALUES ('M1', 12, 'S')");
        Scrivi("INSERT INTO Movimenti VALUES (1, 'M1', 45000)");
        Scrivi("INSERT INTO Movimenti VALUES (2, 'M2', 45000)");
        Scrivi("INSERT INTO TabMultiPartner VALUES ('BTP01', 'OBB', 100)");
    }
    static QStringList Stato()
    {
        return Righe("SELECT (SELECT COUNT(*) FROM TabProdotti), (SELECT COUNT(*) FROM Mandati),"
                     " (SELECT COUNT(*) FROM Cointestatari), (SELECT COUNT(*) FROM Movimenti),"
                     " (SELECT COUNT(*) FROM TabMultiPartner)");
    }
};

TEST_F(EliminaProdotti, DueDomandeETuttoInsieme)
{
    // The second question comes even for a product without mandates.
    m_messaggi.rispondi(Risposta::Si);
    m_messaggi.rispondi(Risposta::No);
    EXPECT_EQ(EliminaProdotto("BTX03"), EsitoEliminazione::Tenuto);
    ASSERT_EQ(m_messaggi.testi().size(), 2);
    EXPECT_EQ(m_messaggi.testi()[0], "ELIMINO IL CODICE BTX03 ?");
    EXPECT_EQ(m_messaggi.testi()[1],
              "CONFERMI LA CANCELLAZIONE DEI SUOI MANDATI  E DEI LORO MOVIMENTI?");
    EXPECT_EQ(m_messaggi.richieste()[1].titolo, NomeProgrammaMaiuscolo() + " -CANCELLAZIONE");
    EXPECT_EQ(Stato(), QStringList{"3|2|1|2|1"});

    // A failure halfway keeps every row.
    const QString multi = NomeSchemaSql(SchemaDi(Db(), Archivio::Dati)) + ".TabMultiPartner";
    Rifiuta("temp.blocca", "DELETE", multi, "bloccato");
    m_messaggi.pulisci();
    m_messaggi.rispondi(Risposta::Si);
    m_messaggi.rispondi(Risposta::Si);
    EXPECT_EQ(EliminaProdotto("BTP01"), EsitoEliminazione::Guasto);
    EXPECT_TRUE(m_messaggi.testi().value(2).startsWith("ERRORE IN CANCELLAZIONE: non cancello"));
    EXPECT_EQ(Stato(), QStringList{"3|2|1|2|1"});

    TogliRifiuto("temp.blocca", multi);
    m_messaggi.rispondi(Risposta::Si);
    m_messaggi.rispondi(Risposta::Si);
    EXPECT_EQ(EliminaProdotto("BTP01"), EsitoEliminazione::Eliminato);
    EXPECT_EQ(Stato(), QStringList{"2|1|0|1|0"});
}

} // namespace
} // namespace sorvane::prova
