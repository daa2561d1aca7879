#pragma once

// The field checks of the 04 ledger's movement and filter. The movement's
// date, client and reason are checked as on the slip screens (the same
// routine, the same indices 1 to 6); the filter's client (16, 17) as the
// slip management's filter client; the currency carries the 2002 cut-over:
// before 2002 a movement is in lire, from 2002 in the base currency, and
// anything else is asked about. Like the slip checks, these see the screen's
// `txt` only as texts by index, and leave the failing index in
// sessione().CodiceStop.

#include "distinte/ControllaCampo.h"

#include <QMap>
#include <QString>
#include <cstdint>
#include <optional>
#include <utility>

namespace sorvane {

enum CampoDistinta04 : int {
    Campo04Giorno = 1,
    Campo04Mese = 2,
    Campo04Anno = 3,
    Campo04CodiceCliente = 4,
    Campo04NomeCliente = 5,
    Campo04Causale = 6,
    Campo04Prodotto = 7,
    Campo04Moneta = 8,
    Campo04Importo = 9,
    Campo04GiornoDal = 10,
    Campo04MeseDal = 11,
    Campo04AnnoDal = 12,
    Campo04GiornoAl = 13,
    Campo04MeseAl = 14,
    Campo04AnnoAl = 15,
    Campo04CodiceFiltro = 16,
    Campo04NomeFiltro = 17,
};

// Another screen's fields seen under the slip checks' indices: each pair
// (slip index, screen index) reads and writes the screen's field there; any
// other index is the screen's own when `altriUguali`, else no field.
class CampiRinumerati : public CampiMaschera
{
public:
    CampiRinumerati(CampiMaschera &txt, std::initializer_list<std::pair<int, int>> coppie,
                    bool altriUguali);
    QString testo(int indice) const override { return m_txt.testo(verso(indice)); }
    void imposta(int indice, const QString &t) override { m_txt.imposta(verso(indice), t); }
    PosizioneCampo posizione(int indice) const override
    {
        return m_txt.posizione(verso(indice));
    }

private:
    int verso(int indice) const { return m_coppie.value(indice, m_altri ? indice : 0); }
    CampiMaschera &m_txt;
    QMap<int, int> m_coppie;
    bool m_altri;
};

struct ControlloCampi4
{
    explicit ControlloCampi4(CampiMaschera &campi);

    CampiMaschera &txt;
    // The slip checks that do the date, the clients and the reason; the
    // screen sets its client search here.
    ControlloCampi base;
    // The final check of CONFERMA: a blank reason and a zero amount fail.
    bool rigoroso = false;

    // Left by the checks.
    int CampoFuoco = 0;            // as ControlloCampi::CampoFuoco
    std::optional<QString> Squadra; // the new caption of `lbTeam`, when it changes
    bool VersoEstrai = false;      // a filter client found: the focus to "&ESTRAI"

    std::int32_t ClienteCorrente() const { return base.ClienteCorrente; }

    // Checks one field, with its lookups, fill-ins and questions; answers
    // (and leaves) sessione().CodiceStop, 0 when good.
    int ControllaCampo4(int indice);
    // CONFERMA: fields 1 to 9 in order, rigoroso on; the first failure's code.
    int ControllaMovimento4();

    // The currency a blank currency field takes as it gets the focus: lire
    // for a date (of fields 1 to 3, or today) before 2002, else the base.
    QString MonetaProposta() const;

private:
    std::int32_t giornoMovimento() const;
    void controllaMoneta();
    void controllaCliente(int indice);
};

// The words of a code of the 04 checks; empty for a code without.
QString TestoErroreCampo4(int codice);
// Shows the message of sessione().CodiceStop in a stop box titled
// "KELVAR - ERRORE N. " and the code; a wrong date's code becomes its
// day's. Answers the field that is to get the focus.
int MostraErroreCampo4();

} // namespace sorvane
