#include "distinte/ControllaCampo.h"

#include "frame/core/Campi.h"
#include "frame/core/Giorni.h"
#include "frame/core/Impostazioni.h"
#include "frame/core/Messaggi.h"
#include "frame/core/Sessione.h"
#include "frame/core/Valore.h"
#include "store/Cambi.h"
#include "store/Cliente.h"
#include "store/Descrizioni.h"
#include "store/Schema.h"
#include "store/Tabelle.h"

#include <cmath>

namespace sorvane {

namespace {

// A date further than this from today is asked about.
constexpr int GiorniSenzaDomanda = 180;

const QString TabellaCausali = QStringLiteral("DistCausali");

std::int16_t &codiceStop() { return sessione().CodiceStop; }

double ValoreCampo(const CampiMaschera &txt, int indice)
{
    return Val(txt.testo(indice).trimmed());
}

bool TraLimiti(double valore, double minimo, double massimo)
{
    return valore >= minimo && valore <= massimo;
}

// The three fields of a date joined as typed.
QString DataDaCampi(const CampiMaschera &txt, int giorno)
{
    return txt.testo(giorno).trimmed() + QLatin1Char('/') + txt.testo(giorno + 1).trimmed()
        + QLatin1Char('/') + txt.testo(giorno + 2).trimmed();
}

// The filter's dates may be left out altogether.
bool DataOVuota(const QString &data)
{
    return data == QLatin1String("//") || IsDate(data);
}

int Oggi()
{
    const auto oggi = LeggiData(sessione().OggiTesto);
    return GiornoDaData(oggi ? *oggi : QDate::currentDate());
}

int LarghezzaCausale()
{
    const Tabella *t = TrovaTabella(TabellaCausali);
    const Colonna *c = t ? t->colonna(QStringLiteral("Codice")) : nullptr;
    return c ? c->larghezza : 3;
}

} // namespace

int ControlloCampi::ControllaCampo(int indice)
{
    CampoFuoco = 0;
    CauDes.reset();
    DataMovimento = DataDaCampi(txt, CampoGiorno);
    codiceStop() = static_cast<std::int16_t>(indice);
    bool buono = true;

    switch (indice) {
    case CampoGiorno:
    case CampoGiornoAl:
        buono = TraLimiti(ValoreCampo(txt, indice), 1, 31);
        break;
    case CampoMese:
    case CampoMeseAl:
        buono = TraLimiti(ValoreCampo(txt, indice), 1, 12);
        break;
    case CampoAnno:
        controllaData();
        return codiceStop();
    case CampoCodiceCliente:
        controllaCodiceCliente(CampoCodiceCliente, CampoNomeCliente);
        return codiceStop();
    case CampoNomeCliente:
        controllaNomeCliente(CampoCodiceCliente, CampoNomeCliente);
        return codiceStop();
    case CampoCausale:
        controllaCausale();
        return codiceStop();
    case CampoMoneta:
        controllaMoneta();
        return codiceStop();
    case CampoImporto:
    case CampoSpese:
        return ControllaImporto(indice);
    case CampoGiornoDal:
        buono = ValoreCampo(txt, indice) <= 31;
        break;
    case CampoMeseDal:
        buono = ValoreCampo(txt, indice) <= 12;
        break;
    case CampoAnnoDal:
        buono = DataOVuota(DataDaCampi(txt, CampoGiornoDal));
        break;
    case CampoAnnoAl:
        buono = DataOVuota(DataDaCampi(txt, CampoGiornoAl));
        break;
    case CampoCodiceFiltro:
        controllaCodiceCliente(CampoCodiceFiltro, CampoNomeFiltro);
        return codiceStop();
    case CampoNomeFiltro:
        controllaNomeCliente(CampoCodiceFiltro, CampoNomeFiltro);
        return codiceStop();
    default:
        break;
    }
    if (buono)
        codiceStop() = 0;
    return codiceStop();
}

void ControlloCampi::controllaData()
{
    const auto data = LeggiData(DataMovimento);
    if (!data)
        return;
    codiceStop() = 0;
    if (std::abs(GiornoDaData(*data) - Oggi()) <= GiorniSenzaDomanda)
        return;
    // An old (or far) date is only asked about: it stays valid either way.
    const Risposta r = Messaggio(QStringLiteral("DATA DI OLTRE 6 MESI: CONFERMI?"),
                                 QStringLiteral("KELVAR - DATA VECCHIA"), Icona::Domanda,
                                 Pulsanti::SiNo);
    if (r != Risposta::Si)
        CampoFuoco = CampoGiorno;
}

void ControlloCampi::controllaCodiceCliente(int codice, int nome)
{
    const double valore = ValoreCampo(txt, codice);
    if (!(valore > 0) && !rigoroso) {
        // The client may come from the name.
        codiceStop() = 0;
        return;
    }
    if (valore > 0 && valore <= 2147483647.0) {
        CaricaCliente(static_cast<std::int32_t>(valore));
        if (Cli().Codice != 0) {
            riempiCliente(codice, nome);
            if (codice == CampoCodiceCliente && UltimoTasto == TastoGiu)
                CampoFuoco = CampoCausale;
            codiceStop() = 0;
            return;
        }
    }
    if (!rigoroso)
        return;
    // The button's check: the movement's client is the one the screen
    // shows. A code that names nobody (blank included) stands only for a
    // name that names exactly one client now; anything else fails, and no
    // client of an earlier lookup is taken in its place.
    const QString testo = txt.testo(nome).trimmed();
    if (!testo.isEmpty() && ricerca.CercaNomi && ricerca.CercaNomi(testo) == 1) {
        riempiCliente(codice, nome);
        codiceStop() = 0;
        return;
    }
    ClienteCorrente = 0;
}

bool ControlloCampi::clienteMostrato(int codice, const QString &testo)
{
    // The client in hand, its code in the code field and its name as it
    // was filled in: nothing was changed since it was chosen.
    if (ClienteCorrente <= 0 || ValoreCampo(txt, codice) != ClienteCorrente)
        return false;
    CaricaCliente(ClienteCorrente);
    return Cli().Codice == ClienteCorrente && testo == Cli().Ragsoc.trimmed();
}

void ControlloCampi::controllaNomeCliente(int codice, int nome)
{
    const QString testo = txt.testo(nome).trimmed();
    // A name left as it was filled in searches no more: two clients of one
    // name would bring the popup back each time the field is passed.
    if (testo.isEmpty() || clienteMostrato(codice, testo)) {
        codiceStop() = 0;
        return;
    }
    const int quanti = ricerca.CercaNomi ? ricerca.CercaNomi(testo) : 0;
    if (quanti <= 0)
        return;
    if (quanti > 1) {
        const PosizioneCampo p = txt.posizione(nome);
        const int alto = p.altoCampo + p.altezzaCampo + p.altoSchermo + ScartoListaClienti;
        const std::int32_t scelto =
            ricerca.MostraLista ? ricerca.MostraLista(p.sinistraSchermo, alto) : 0;
        if (scelto < 1) {
            // Left without a choice: no client, neither on the screen nor
            // behind it.
            txt.imposta(codice, QString());
            ClienteCorrente = 0;
            CampoFuoco = nome;
            return;
        }
        CaricaCliente(scelto);
        if (Cli().Codice == 0)
            return;
    }
    riempiCliente(codice, nome);
    codiceStop() = 0;
}

void ControlloCampi::riempiCliente(int codice, int nome)
{
    ClienteCorrente = Cli().Codice;
    txt.imposta(codice, QString::number(Cli().Codice));
    // The buffer keeps the name trimmed: what the field shows.
    txt.imposta(nome, Cli().Ragsoc);
}

void ControlloCampi::controllaCausale()
{
    const QString codice = AllineaCodice(txt.testo(CampoCausale), LarghezzaCausale());
    if (codice.isEmpty()) {
        if (!rigoroso)
            codiceStop() = 0;
        return;
    }
    txt.imposta(CampoCausale, codice);
    TabelleCondivise &t = tabelle();
    if (t.NomeTabella != TabellaCausali) {
        ChiudiTabella();
        t.NomeTabella = TabellaCausali;
    }
    DescrizioneDaCodice(codice, 1);
    if (t.CodiceCercato.isEmpty())
        return;
    CauDes = t.DescrizioneCercata;
    codiceStop() = 0;
}

void ControlloCampi::controllaMoneta()
{
    const QString base = impostazioni().CodBase;
    const QString moneta = txt.testo(CampoMoneta).trimmed();
    if (moneta.isEmpty()) {
        txt.imposta(CampoMoneta, base);
        codiceStop() = 0;
        return;
    }
    if (moneta != base) {
        const auto data = LeggiData(DataMovimento);
        if (CercaCambio(moneta, data ? GiornoDaData(*data) : 0) == 0)
            return;
    }
    codiceStop() = 0;
}

int ControlloCampi::ControllaImporto(int indice)
{
    // A text that is no number would be saved as nothing at all, whatever
    // the field shows: the field is not left until it reads.
    const std::optional<double> importo = LeggiImporto(txt.testo(indice));
    const bool buono = importo && (indice != CampoImporto || *importo != 0);
    codiceStop() = static_cast<std::int16_t>(
        buono ? 0 : indice == CampoImporto ? int(CampoImporto) : ErroreSpese);
    return codiceStop();
}

int ControlloCampi::controllaElenco(std::initializer_list<int> indici)
{
    rigoroso = true;
    for (int i : indici) {
        if (ControllaCampo(i) > 0)
            return codiceStop();
    }
    return 0;
}

int ControlloCampi::ControllaInserimento()
{
    // The expenses too: a key that presses the button leaves no field.
    return controllaElenco({CampoGiorno, CampoMese, CampoAnno, CampoCodiceCliente,
                            CampoCausale, CampoMoneta, CampoImporto, CampoSpese});
}

int ControlloCampi::ControllaModifica()
{
    if (controllaElenco({CampoGiorno, CampoMese, CampoAnno, CampoCodiceCliente, CampoCausale}))
        return codiceStop();
    // A key that presses the button leaves no field: an amount that does not
    // read as a number would be saved as 0. A change may keep a 0 amount.
    for (int i : {int(CampoImporto), int(CampoSpese)}) {
        if (!LeggiImporto(txt.testo(i))) {
            codiceStop() = static_cast<std::int16_t>(i == CampoImporto ? i : ErroreSpese);
            return codiceStop();
        }
    }
    return 0;
}

QString TestoErroreCampo(int codice)
{
    switch (codice) {
    case 1: return QStringLiteral("GIORNO ERRATO");
    case 2: return QStringLiteral("MESE ERRATO");
    case 3: return QStringLiteral("DATA MOVIMENTO ERRATA");
    case 4: return QStringLiteral("CLIENTE NON CODIFICATO");
    case 6: return QStringLiteral("CAUSALE NON CODIFICATA");
    case 17: return QStringLiteral("MONETA NON CODIFICATA");
    case 18:
    case ErroreSpese: return QStringLiteral("IMPORTO NON INDICATO");
    case 20: return QStringLiteral("GIORNO INIZIALE ERRATO");
    case 21: return QStringLiteral("MESE INIZIALE ERRATO");
    case 22: return QStringLiteral("DATA MOVIMENTO INIZIALE ERRATA");
    case 23: return QStringLiteral("GIORNO FINALE ERRATO");
    case 24: return QStringLiteral("MESE FINALE ERRATO");
    case 25: return QStringLiteral("DATA MOVIMENTO FINALE ERRATA");
    case 26:
    case 27: return QStringLiteral("CLIENTE NON CODIFICATO");
    default: return QString();
    }
}

int MostraErroreCampo()
{
    std::int16_t &codice = codiceStop();
    const QString testo = TestoErroreCampo(codice);
    if (!testo.isEmpty()) {
        sessione().TestoErrore = testo;
        Messaggio(testo, QStringLiteral("KELVAR - ERRORE N. ") + QString::number(codice),
                  Icona::Stop);
    }
    // A wrong date sends the user back to its day. The filter's codes are
    // one field late (22 is the month from, 25 the month to), and so is
    // where they send the focus.
    switch (codice) {
    case 3: codice = 1; break;
    case 22: codice = 20; break;
    case 25: codice = 23; break;
    case ErroreSpese: codice = CampoSpese; break;
    default: break;
    }
    return codice;
}

} // namespace sorvane
