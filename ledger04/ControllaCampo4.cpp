#include "ledger04/ControllaCampo4.h"

#include "frame/core/Campi.h"
#include "frame/core/Giorni.h"
#include "frame/core/Impostazioni.h"
#include "frame/core/Messaggi.h"
#include "frame/core/Sessione.h"
#include "frame/core/Valore.h"
#include "ledger04/Squadre.h"
#include "store/Cambi.h"
#include "store/Cliente.h"

namespace sorvane {

namespace {

std::int16_t &codiceStop() { return sessione().CodiceStop; }

double Valore(const CampiMaschera &txt, int indice) { return Val(txt.testo(indice).trimmed()); }

QString DataDaCampi(const CampiMaschera &txt, int giorno)
{
    return txt.testo(giorno).trimmed() + QLatin1Char('/') + txt.testo(giorno + 1).trimmed()
           + QLatin1Char('/') + txt.testo(giorno + 2).trimmed();
}

bool DataOVuota(const QString &data) { return data == QLatin1String("//") || IsDate(data); }

std::int32_t GiornoOggi()
{
    const std::optional<QDate> oggi = LeggiData(sessione().OggiTesto);
    return GiornoDaData(oggi ? *oggi : QDate::currentDate());
}

} // namespace

CampiRinumerati::CampiRinumerati(CampiMaschera &txt,
                                 std::initializer_list<std::pair<int, int>> coppie,
                                 bool altriUguali)
    : m_txt(txt), m_altri(altriUguali)
{
    for (const auto &[slip, schermo] : coppie)
        m_coppie.insert(slip, schermo);
}

ControlloCampi4::ControlloCampi4(CampiMaschera &campi) : txt(campi), base(campi) {}

std::int32_t ControlloCampi4::giornoMovimento() const
{
    const std::optional<QDate> data = LeggiData(DataDaCampi(txt, Campo04Giorno));
    return data ? GiornoDaData(*data) : GiornoOggi();
}

QString ControlloCampi4::MonetaProposta() const
{
    const Impostazioni &imp = impostazioni();
    return giornoMovimento() < GiornoEuro ? imp.CodLit : imp.CodBase;
}

int ControlloCampi4::ControllaCampo4(int indice)
{
    CampoFuoco = 0;
    Squadra.reset();
    VersoEstrai = false;
    base.rigoroso = rigoroso;
    bool buono = true;
    switch (indice) {
    case Campo04Giorno:
    case Campo04Mese:
    case Campo04Anno:
    case Campo04CodiceCliente:
    case Campo04NomeCliente:
    case Campo04Causale:
        base.ControllaCampo(indice);
        CampoFuoco = base.CampoFuoco;
        return codiceStop();
    case Campo04Moneta:
        controllaMoneta();
        return codiceStop();
    case Campo04Importo: {
        codiceStop() = Campo04Importo;
        const std::optional<double> importo = LeggiImporto(txt.testo(indice));
        buono = importo && !(rigoroso && *importo == 0);
        break;
    }
    case Campo04GiornoDal:
        codiceStop() = Campo04GiornoDal;
        buono = Valore(txt, indice) <= 31;
        break;
    case Campo04MeseDal:
        codiceStop() = Campo04MeseDal;
        buono = Valore(txt, indice) <= 12;
        break;
    case Campo04AnnoDal:
    case Campo04AnnoAl:
        codiceStop() = static_cast<std::int16_t>(indice);
        buono = DataOVuota(DataDaCampi(txt, indice - 2));
        break;
    case Campo04GiornoAl:
        codiceStop() = Campo04GiornoAl;
        buono = Valore(txt, indice) >= 1 && Valore(txt, indice) <= 31;
        break;
    case Campo04MeseAl:
        codiceStop() = Campo04MeseAl;
        buono = Valore(txt, indice) >= 1 && Valore(txt, indice) <= 12;
        break;
    case Campo04CodiceFiltro:
    case Campo04NomeFiltro:
        controllaCliente(indice);
        return codiceStop();
    default:
        codiceStop() = static_cast<std::int16_t>(indice);
        break;
    }
    if (buono)
        codiceStop() = 0;
    return codiceStop();
}

void ControlloCampi4::controllaCliente(int indice)
{
    // The slip checks under their filter indices, on the view that shows
    // them this screen's fields.
    CampiRinumerati filtro(txt, {{CampoCodiceFiltro, Campo04CodiceFiltro},
                                 {CampoNomeFiltro, Campo04NomeFiltro}},
                           true);
    ControlloCampi c(filtro);
    c.ricerca = base.ricerca;
    c.UltimoTasto = base.UltimoTasto;
    const bool codice = indice == Campo04CodiceFiltro;
    if (codice) {
        // The code names the client, or none: no client, no team.
        base.ClienteCorrente = 0;
        Squadra = QString();
    }
    if (c.ControllaCampo(codice ? CampoCodiceFiltro : CampoNomeFiltro) > 0) {
        codiceStop() = static_cast<std::int16_t>(indice);
        return;
    }
    if (c.CampoFuoco == CampoNomeFiltro) {
        // The popup left without a choice.
        Squadra = QString();
        CampoFuoco = Campo04NomeFiltro;
        return;
    }
    if (c.ClienteCorrente > 0) {
        base.ClienteCorrente = c.ClienteCorrente;
        Squadra = TestoSquadra(Cli());
        VersoEstrai = codice;
    }
}

void ControlloCampi4::controllaMoneta()
{
    codiceStop() = Campo04Moneta;
    const Impostazioni &imp = impostazioni();
    const QString moneta = txt.testo(Campo04Moneta).trimmed();
    const std::int32_t giorno = giornoMovimento();
    if (moneta != imp.CodBase && CercaCambio(moneta, giorno) == 0)
        return;
    codiceStop() = 0;
    // The question names the lire whatever the currency is: the office
    // checks the cut-over, not the currency.
    if (giorno < GiornoEuro && moneta != imp.CodLit) {
        if (Messaggio(QStringLiteral("MOVIMENTO PRIMA DEL 2002 NON IN LIRE; Confermi"),
                      QStringLiteral("MOVIMENTO NON IN LIRE"), Icona::Domanda, Pulsanti::SiNo)
            == Risposta::No)
            txt.imposta(Campo04Moneta, imp.CodLit);
    } else if (giorno >= GiornoEuro && moneta != imp.CodBase) {
        if (Messaggio(QStringLiteral("MOVIMENTO DOPO IL 2001 IN LIRE; Confermi"),
                      QStringLiteral("MOVIMENTO IN LIRE"), Icona::Domanda, Pulsanti::SiNo)
            == Risposta::No)
            txt.imposta(Campo04Moneta, imp.CodBase);
    }
}

int ControlloCampi4::ControllaMovimento4()
{
    rigoroso = true;
    int codice = 0;
    for (int i = Campo04Giorno; i <= Campo04Importo && codice == 0; ++i)
        codice = ControllaCampo4(i);
    rigoroso = false;
    base.rigoroso = false;
    return codice;
}

QString TestoErroreCampo4(int codice)
{
    switch (codice) {
    case 1: return QStringLiteral("GIORNO ERRATO");
    case 2: return QStringLiteral("MESE ERRATO");
    case 3: return QStringLiteral("DATA MOVIMENTO ERRATA");
    case 4:
    case 5:
    case 16:
    case 17: return QStringLiteral("CLIENTE NON CODIFICATO");
    case 6: return QStringLiteral("CAUSALE NON CODIFICATA");
    case 8: return QStringLiteral("MONETA NON CODIFICATA");
    case 9: return QStringLiteral("IMPORTO NON INDICATO");
    case 10: return QStringLiteral("GIORNO INIZIALE ERRATO");
    case 11: return QStringLiteral("MESE INIZIALE ERRATO");
    case 12: return QStringLiteral("DATA MOVIMENTO INIZIALE ERRATA");
    case 13: return QStringLiteral("GIORNO FINALE ERRATO");
    case 14: return QStringLiteral("MESE FINALE ERRATO");
    case 15: return QStringLiteral("DATA MOVIMENTO FINALE ERRATA");
    default: return QString();
    }
}

int MostraErroreCampo4()
{
    std::int16_t &codice = codiceStop();
    const QString testo = TestoErroreCampo4(codice);
    if (!testo.isEmpty()) {
        sessione().TestoErrore = testo;
        Messaggio(testo, QStringLiteral("KELVAR - ERRORE N. ") + QString::number(codice),
                  Icona::Stop);
    }
    if (codice == Campo04Anno)
        codice = Campo04Giorno;
    return codice;
}

} // namespace sorvane
