#pragma once

// GesIntMd, the average-interest screen: a client (or the team through a
// client), a period, a firm, an opening and a closing balance. "&ESTRAI"
// copies the ledger's rows into the working list `WInterMedi` with the
// opening-balance row beside them, which follows the fields as they are
// left; the list can be corrected on the ledger through the change form
// shared with GesDist4, and "&STAMPA" runs the average-interest print.

#include "ledger04/Gestione04.h"
#include "ledger04/InterMedi.h"
#include "ledger04/Interessi.h"

#include <memory>

namespace sorvane {

class GesIntMd : public Gestione04
{
    Q_OBJECT

public:
    explicit GesIntMd(QWidget *padre = nullptr);
    ~GesIntMd() override;

    QPushButton *cmdESCI() const { return m_cmdFine; }
    const StatoInterMedi &Stato() const { return m_stato; }
    const StatoInteressi &StatoStampa() const { return m_statoStampa; }

    void Estrai() override;
    void Stampa() override;
    // The opening-balance row as the fields now hold it, and the list again.
    void ScriviSaldoIniziale();

protected:
    Misura misuraFiltro(int indice) const override;
    void disponiFiltri(QGridLayout *g, QWidget *riquadro) override;
    QList<QWidget *> tabFiltri() const override;
    int campoCodiceFiltro() const override { return CampoIMCodiceCliente; }
    std::int32_t clienteEstratto() const override { return m_stato.ClienteEstratto; }
    void dopoModifica(bool) override { Estrai(); }
    QString chiaveGriglia() const override;
    int controllaCampo(int indice) override;
    int mostraErrore() override;
    void filtroEntrato(int indice) override;
    void filtroLasciato(int indice) override;
    std::optional<QString> dataDellaMoneta(int indice) const override;

private:
    std::unique_ptr<ControlloInterMedi> m_controlloIM;
    StatoInterMedi m_stato;
    StatoInteressi m_statoStampa;
    QString m_campoPrecedente; // the text of the filter field entered
};

} // namespace sorvane
