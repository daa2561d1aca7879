#pragma once

// The field checks that the entry screen and the management screen share.
// The rules see the screen's `txt` only as texts by index, so they run the
// same on the screens (an adapter over their QLineEdits) and in the tests.
// The failing field's index stands in sessione().CodiceStop; the caller
// shows it with MostraErroreCampo and puts the focus on the field it names.

#include "frame/core/Campi.h"

#include <QMap>
#include <QString>
#include <cstdint>
#include <functional>
#include <optional>

namespace sorvane {

// Field indices of the slip screens.
enum CampoDistinta : int {
    CampoGiorno = 1,
    CampoMese = 2,
    CampoAnno = 3,
    CampoCodiceCliente = 4,
    CampoNomeCliente = 5,
    CampoCausale = 6,
    CampoPrimoProdotto = 7,  // 7 to 11, row "0"
    CampoPrimoGiro = 12,     // 12 to 16, row "1"
    CampoUltimoGiro = 16,
    CampoMoneta = 17,
    CampoImporto = 18,
    CampoAssegno = 19,
    CampoSpese = 20,
    // Filter of the management screen.
    CampoGiornoDal = 21,
    CampoMeseDal = 22,
    CampoAnnoDal = 23,
    CampoGiornoAl = 24,
    CampoMeseAl = 25,
    CampoAnnoAl = 26,
    CampoCodiceFiltro = 27,
    CampoNomeFiltro = 28,
};

// The code of expenses that read as no amount: the amount's words, and the
// focus back on the expenses (20 is a day's code of the management filter).
inline constexpr int ErroreSpese = 30;

inline constexpr int TastoGiu = tasti::Giu;

// Where a field stands, in twips, for the place of the client popup.
struct PosizioneCampo
{
    int sinistraSchermo = 0;
    int altoSchermo = 0;
    int altoCampo = 0;
    int altezzaCampo = 0;
};

// The screen's text fields by index.
class CampiMaschera
{
public:
    virtual ~CampiMaschera() = default;
    virtual QString testo(int indice) const = 0;
    virtual void imposta(int indice, const QString &testo) = 0;
    virtual PosizioneCampo posizione(int) const { return {}; }
};

// Fields held in memory: what the tests type, or a screen without widgets.
class CampiInMemoria : public CampiMaschera
{
public:
    QString testo(int indice) const override { return m_testi.value(indice); }
    void imposta(int indice, const QString &testo) override { m_testi[indice] = testo; }

private:
    QMap<int, QString> m_testi;
};

// The client popup as the slip screens use it; the screen sets both to the
// popup's shared routines.
struct RicercaCliente
{
    // The unseen search: the popup made ready (shared code cleared, closed
    // clients left out), then its search on the trimmed name. Answers how
    // many clients match; with one, that client is in Cli().
    std::function<int(const QString &nome)> CercaNomi;
    // The popup shown modally at left and top (twips) for a choice among
    // several; answers the chosen client's code, below 1 when none was.
    std::function<std::int32_t(int sinistra, int alto)> MostraLista;
};

// The popup opens this far below the bottom of the calling field.
inline constexpr int ScartoListaClienti = 360;

// The checks of one screen, with the screen's state they read and leave.
struct ControlloCampi
{
    explicit ControlloCampi(CampiMaschera &campi) : txt(campi) {}

    CampiMaschera &txt;
    RicercaCliente ricerca;
    // The final check of a button: a blank reason fails, and so does a
    // client code that names nobody unless the name names exactly one.
    bool rigoroso = false;
    // The key that left the field (down arrow: from the client code the
    // focus skips the name).
    int UltimoTasto = 0;

    // Left by the checks.
    QString DataMovimento;            // fields 1 to 3 joined
    std::int32_t ClienteCorrente = 0; // the client of the last lookup
    // A field that is to get the focus although the check passed (or, for
    // a popup left without a choice, the field to return to); 0 none.
    int CampoFuoco = 0;
    // The reason's description for the label, when the code was found.
    std::optional<QString> CauDes;

    // Checks the field of that index, with its lookups and fill-ins; leaves
    // and answers sessione().CodiceStop, 0 when the field is good.
    int ControllaCampo(int indice);

    // An amount field (the amount, the expenses) as it is left: its text
    // must read as a number, the amount as one other than 0. Leaves and
    // answers sessione().CodiceStop: 18 for the amount, ErroreSpese for the
    // expenses, 0 when the field is good.
    int ControllaImporto(int indice);

    // The button checks, rigoroso on: the entry screen's fields 1 to 4, 6,
    // 17, 18 and 20, the management screen's 1 to 4 and 6. Stops at the first
    // failure and answers its code.
    int ControllaInserimento();
    int ControllaModifica();

private:
    int controllaElenco(std::initializer_list<int> indici);
    void controllaData();
    void controllaCodiceCliente(int codice, int nome);
    void controllaNomeCliente(int codice, int nome);
    bool clienteMostrato(int codice, const QString &testo);
    void controllaCausale();
    void controllaMoneta();
    void riempiCliente(int codice, int nome);
};

// The words of a field code; empty for a code with no message of its own.
QString TestoErroreCampo(int codice);

// Shows the message of sessione().CodiceStop in a stop box titled
// "KELVAR - ERRORE N. " and the code (none for a code without words), then
// turns a date's code into its day's (3 to 1, 22 to 20, 25 to 23). Answers
// the code left, the field that is to get the focus.
int MostraErroreCampo();

} // namespace sorvane
