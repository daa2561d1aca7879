// The tables themselves. Widths of text columns are those the screens
// accept; where no screen fixes one it follows the column it is joined to
// (a firm's name in a movement is as wide as `SocNome`).

#include "store/Schema.h"

namespace sorvane {

namespace {

Colonna T(const char *nome, int larghezza)
{
    return {QString::fromLatin1(nome), Tipo::Testo, larghezza};
}
Colonna M(const char *nome) { return {QString::fromLatin1(nome), Tipo::Memo, 0}; }
Colonna I(const char *nome) { return {QString::fromLatin1(nome), Tipo::Intero, 0}; }
Colonna R(const char *nome) { return {QString::fromLatin1(nome), Tipo::Reale, 0}; }
Colonna D(const char *nome) { return {QString::fromLatin1(nome), Tipo::Data, 0}; }

Indice Chiave(const QStringList &colonne) { return {IndicePrimario, colonne, true}; }
Indice Primaria(const QStringList &colonne) { return {IndicePrimario, colonne, false}; }
Indice Secondaria(const QStringList &colonne) { return {IndiceSecondario, colonne, false}; }
Indice Filtro(const char *nome, const QStringList &colonne)
{
    return {QString::fromLatin1(nome), colonne, false};
}

// An index of the management list's order on `campo`: "ordine_" + nome.
Indice Ordine(const char *nome, const char *campo)
{
    return {QStringLiteral("ordine_") + QString::fromLatin1(nome),
            {QString::fromLatin1(campo), "dstData", "dstCodice", "dstPrg", "dstChiusa"},
            false};
}

Tabella Nuova(const char *nome, Archivio a, QList<Colonna> colonne, QList<Indice> indici)
{
    Tabella t;
    t.nome = QString::fromLatin1(nome);
    t.archivio = a;
    t.colonne = std::move(colonne);
    t.indici = std::move(indici);
    return t;
}

// A code table of the generic lookup: `Codice` and `Descrizione`, found by
// either of them.
Tabella Codici(const char *nome, Archivio a, int larghezzaCodice)
{
    return Nuova(nome, a, {T("Codice", larghezzaCodice), T("Descrizione", 40)},
                 {Chiave({"Codice"}), Secondaria({"Descrizione"})});
}

Tabella DellaSuite(const char *nome, Archivio a, Colonna chiave)
{
    Tabella t = Nuova(nome, a, {chiave}, {Primaria({chiave.nome})});
    t.soloSuite = true;
    return t;
}

// The columns that a client row holds; the client list prints copy whole
// rows into tables of the same shape.
QList<Colonna> ColonneClienti()
{
    return {I("CliCodice"),          T("CliRagsoc", 35),      T("CliRagsocEstesa", 35),
            T("CliIndirizzo", 35),   T("CliLocalita", 35),    T("CliCap", 5),
            T("CliProvincia", 3),    T("CliNazione", 3),      T("CliTelefono", 14),
            T("CliTelefono1", 15),   T("CliTelefono2", 15),   T("CliTelefono3", 15),
            T("CliPartitaIva", 11),  T("CliCodiceFiscale", 16), T("CliCategoria", 5),
            T("CliAgevolazione", 5), T("CliSesso", 1),        T("CliNatoA", 35),
            D("CliNatoIl"),          T("CliDocumTipo", 1),    T("CliDocumento", 20),
            T("CliDocRilascA", 35),  T("CliDocRilascIl", 10), T("CliContoCo", 30),
            T("CliVisite", 13),      I("CliAbbinamento"),     I("CliUltimaVisita"),
            T("CliOraVisita", 5),    M("CliNote"),            I("CliEta"),
            T("CliRischio", 1),      D("CliRischioData"),     T("CliRelazione", 3),
            T("CliRiconosci", 3),    T("CliReferenze", 3),    T("CliAttivita", 3),
            T("CliEtic", 1),         T("CliTel", 1)};
}

// The slip row of `Distinte` and of the entry screen's `BkDistinte`.
QList<Colonna> ColonneDistinta()
{
    return {I("dstCodice"),    T("dstPrg", 1),      T("dstDitta", 35),  I("dstData"),
            I("dstCliente"),   T("dstCausale", 3),  T("dstMoneta", 3),  R("dstImporto"),
            T("dstAssegno", 20), T("dstBanca", 30), R("dstSpeseUT"),    T("dstCodP0", 15),
            T("dstCodP1", 15), T("dstCodP2", 15),   T("dstCodP3", 15),  T("dstCodP4", 15),
            T("dstChiusa", 1)};
}

QList<Colonna> Numerate(QList<Colonna> prima, const char *testo, int primoTesto, int testi,
                        const char *numero, int numeri)
{
    for (int i = primoTesto; i <= testi; ++i) {
        const QString nome = QString::fromLatin1(testo) + (i ? QString::number(i) : QString());
        prima.append({nome, Tipo::Testo, 255});
    }
    for (int i = 1; i <= numeri; ++i)
        prima.append({QString::fromLatin1(numero) + QString::number(i), Tipo::Reale, 0});
    return prima;
}

QList<Tabella> TabelleDati()
{
    const Archivio a = Archivio::Dati;
    QList<Colonna> larghezze = {T("LcChiave", 30)};
    for (int i = 0; i < 40; ++i)
        larghezze.append(
            {QStringLiteral("LcCol%1").arg(i, 2, 10, QLatin1Char('0')), Tipo::Intero, 0});

    return {
        DellaSuite("AbbVisite", a, I("AbbCliente")),
        Nuova("Clienti", a, ColonneClienti(),
              {Chiave({"CliCodice"}), Filtro("ragsoc", {"CliRagsoc"}),
               // The client search counts its matches on this index alone.
               Filtro("ragsoc_categoria", {"CliRagsoc", "CliCategoria"})}),
        DellaSuite("ClientiNew", a, I("CliCodice")),
        Nuova("Cointestatari", a, {T("CoMandato", 20), I("CoCliente"), T("CoIntestato", 1)},
              {Primaria({"CoMandato", "CoCliente"}), Filtro("cliente", {"CoCliente"})}),
        Nuova("Colori", a, {I("ColInd"), I("ColRgb")}, {Chiave({"ColInd"})}),
        Nuova("ColoriGrp", a, {T("ColGrp", 1), I("ColRgb")}, {Chiave({"ColGrp"})}),
        Nuova("DistBanche", a, {T("CodBanca", 30)}, {Chiave({"CodBanca"})}),
        Nuova("DistCausali", a, {T("Codice", 3), T("Descrizione", 20), T("Segno", 1)},
              {Chiave({"Codice"}), Secondaria({"Descrizione"})}),
        Nuova("Distinte", a, ColonneDistinta(),
              {Chiave({"dstCodice", "dstPrg"}), Filtro("data", {"dstData"}),
               Filtro("cliente", {"dstCliente"}),
               // The management list reads a page at a time along these, one
               // per sorted field (a client's or a reason's through its code),
               // each followed by the list's tie-breaks; the closed mark last,
               // so that the open ones are told from the index alone.
               Filtro("ordine_data", {"dstData", "dstCodice", "dstPrg", "dstChiusa"}),
               Ordine("cliente", "dstCliente"), Ordine("causale", "dstCausale"),
               Ordine("importo", "dstImporto"), Ordine("assegno", "dstAssegno"),
               Ordine("banca", "dstBanca"), Ordine("spese", "dstSpeseUT")}),
        Nuova("Distinte04", a,
              {I("dstCodice"), T("dstDitta", 35), I("dstData"), I("dstCliente"),
               T("dstCausale", 3), T("dstMoneta", 3), R("dstImporto"), T("dstCodP", 100)},
              {Chiave({"dstCodice"}), Filtro("data", {"dstData"}),
               Filtro("cliente", {"dstCliente", "dstData"})}),
        DellaSuite("FondiPensione", a, T("Codice", 20)),
        DellaSuite("Layout", a, T("Chiave", 30)),
        Nuova("LayOutCol", a, larghezze, {Chiave({"LcChiave"})}),
        DellaSuite("Localita", a, T("Codice", 20)),
        Nuova("Mandati", a, {T("ManMandato", 20), T("ManProdotto", 14)},
              {Primaria({"ManMandato"}), Filtro("prodotto", {"ManProdotto"})}),
        Nuova("Moduli", a, {T("MdKey", 20), I("MdPrg"), T("MdFile", 100), T("MdTitolo", 60)},
              {Primaria({"MdKey", "MdPrg"})}),
        Nuova("Movimenti", a, {I("MovCodice"), T("MovMandato", 20), D("MovData")},
              {Primaria({"MovCodice"}), Filtro("mandato", {"MovMandato", "MovData"})}),
        DellaSuite("ParamImp", a, T("Codice", 20)),
        DellaSuite("Percorsi", a, T("Codice", 20)),
        DellaSuite("Performance", a, T("Codice", 20)),
        DellaSuite("PersPortafoglio", a, T("Codice", 20)),
        DellaSuite("RelProd", a, T("Codice", 20)),
        Nuova("Societa", a,
              {T("SocNome", 35), T("SocIndirizzo", 35), T("SocCap", 5), T("SocLocalita", 35),
               T("SocProvincia", 2)},
              {Chiave({"SocNome"})}),
        Nuova("Squadre", a, {I("Squadra"), I("Cliente")},
              {Chiave({"Squadra", "Cliente"}), Filtro("cliente", {"Cliente"})}),
        Nuova("TabCambi", a, {T("CmbMoneta", 3), D("CmbData"), R("CmbValore")},
              {Chiave({"CmbMoneta", "CmbData"})}),
        Nuova("TabCategExpo", a, {I("riga"), T("Codice", 5), I("Colonna")},
              {Primaria({"riga"})}),
        Nuova("TabCategorie", a,
              {T("Codice", 5), T("Descrizione", 35), T("Tipo", 1), T("BuoniCattivi", 1),
               I("Colore"), I("Totale")},
              {Chiave({"Codice"}), Secondaria({"Descrizione"})}),
        Codici("TabCausali", a, 3),
        Codici("TabEspApp", a, 3),
        Nuova("TabGruppi", a, {T("GrpCodice", 1), T("GrpDescrizione", 35)},
              {Chiave({"GrpCodice"})}),
        Codici("TabModalita", a, 3),
        Nuova("TabMultiPartner", a,
              {T("MpProdotto", 14), T("MpCategoria", 5), R("MpPercentuale")},
              {Primaria({"MpProdotto", "MpCategoria"})}),
        Nuova("TabNazioni", a,
              {T("Codice", 3), T("Descrizione", 35), T("CodiceISO", 3), T("CodiceISTAT", 3),
               T("TipoNaz", 1), I("GesCmb")},
              {Chiave({"Codice"}), Secondaria({"Descrizione"})}),
        Nuova("TabProdExpo", a, {I("riga"), T("Codice", 14), I("Colonna")},
              {Primaria({"riga"})}),
        Nuova("TabProdotti", a,
              {T("Codice", 14),     T("Descrizione", 50), T("Categoria", 5),  T("Gruppo", 1),
               T("Moneta", 3),      I("BuoniCattivi"),    I("NoIndici"),      R("Perc1"),
               R("Perc2"),          R("Perc3"),           R("Perc4"),         R("PercSpese"),
               T("Chiuso", 1),      T("ISIN", 12),        R("Tasso"),         R("Tassazione"),
               I("Periodo"),        I("TipoPeriodo"),     I("AcqInvEff"),     D("AcquistoDat"),
               R("AcquistoImp"),    D("EmissioneDat"),    R("EmissioneImp"),  D("ScadenzaDat"),
               R("ScadenzaImp")},
              {Chiave({"Codice"}), Secondaria({"Descrizione"})}),
        Codici("TabProvincie", a, 3),
        Codici("TabStanley", a, 3),
        Codici("TabStanleyC", a, 3),
        Codici("tabStatiApp", a, 3),
        Nuova("TabTipoEC", a, {T("Codice", 10), T("Categoria", 5)},
              {Primaria({"Codice", "Categoria"})}),
        DellaSuite("Documenti", a, T("Codice", 20)),
        DellaSuite("DocumentiCli", a, T("Codice", 20)),
        DellaSuite("ClientiMM", a, I("CliCodice")),
        Nuova("Cedole", a, {T("CeMandato", 20)}, {Primaria({"CeMandato"})}),

        // Read through the data file but not in the attachment list.
        Nuova("TabBuoCat", a, {T("Codice", 1), T("Descrizione", 30), I("Totalizzatore")},
              {Chiave({"Codice"}), Secondaria({"Descrizione"})}),
        Nuova("TabBuoCatTotali", a, {I("Totalizzatore"), T("Descrizione", 30), R("Totale")},
              {Primaria({"Totalizzatore"})}),
        Codici("TabTipiMand", a, 3),
        Codici("TabCliAttivita", a, 3),
        Codici("TabCliReferenze", a, 3),
        Codici("TabCliRelazioni", a, 3),
        Codici("TabCliRiconoscimenti", a, 3),
    };
}

QList<Tabella> TabelleLavoro()
{
    const Archivio a = Archivio::Lavoro;
    return {
        Nuova("BkDistinte", a, ColonneDistinta(), {Chiave({"dstCodice", "dstPrg"})}),
        Nuova("WInterMedi", a,
              {T("CliRagsoc", 35), I("dstCodice"), T("dstDitta", 35), I("dstData"),
               I("dstCliente"), T("dstCausale", 3), T("dstMoneta", 3), R("dstImporto"),
               T("dstCodP", 100), T("Descrizione", 20), T("Segno", 1)},
              {Primaria({"dstCodice"}), Filtro("data", {"dstData", "dstCodice"})}),
        Nuova("PrtTesta", a, Numerate({}, "TCampo", 0, 17, "TNumero", 10), {}),
        Nuova("PrtCorpo", a, Numerate({}, "CCampo", 0, 14, "CNumero", 20), {}),
        Nuova("PrtPiede", a, Numerate({}, "PCampo", 1, 20, "Pnumero", 26), {}),
        Nuova("PrtClienti", a, ColonneClienti(), {}),
        Nuova("WPrtClienti", a, ColonneClienti(), {}),
        Nuova("Allegati", a, {T("Nome", 64), M("Connessione"), T("Origine", 64)},
              {Chiave({"Nome"})}),
    };
}

QList<Tabella> TabelleVisite()
{
    const Archivio a = Archivio::Visite;
    return {
        Nuova("VisiteN", a, {I("VsCliente"), D("VsData"), R("VsSaldo")},
              {Primaria({"VsCliente", "VsData"})}),
        Nuova("Azioni", a, {I("AzCliente"), T("AzCodice", 6), T("AzDelete", 1)},
              {Primaria({"AzCliente", "AzCodice"}), Filtro("azione", {"AzCodice"})}),
        Nuova("Appuntamenti", a, {I("ApCliente"), D("ApData"), T("ApAzione", 6)},
              {Primaria({"ApCliente", "ApData"})}),
        Nuova("TabAzioni", a, {T("TbaCodice", 6), T("TbaDescrizione", 40)},
              {Chiave({"TbaCodice"}), Secondaria({"TbaDescrizione"})}),
    };
}

QList<Tabella> TabelleIndici()
{
    return {
        Nuova("Indici", Archivio::Indici,
              {T("IndProdotto", 14), D("IndData"), R("IndValore"), R("IndValoreMon"),
               T("IndMoneta", 3)},
              {Chiave({"IndProdotto", "IndData"})}),
    };
}

} // namespace

QList<Tabella> CostruisciTabelle()
{
    QList<Tabella> tutte = TabelleDati();
    tutte += TabelleLavoro();
    tutte += TabelleVisite();
    tutte += TabelleIndici();
    return tutte;
}

} // namespace sorvane
