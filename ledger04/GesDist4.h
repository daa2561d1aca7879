#pragma once

// GesDist4, the management of the 04 ledger: the list of `Distinte04` by
// period, client and firm, with the team of the client shown beside it; a
// double click opens a row for a change or a delete, "&AGGIUNGI" opens a
// new one (the form shared with the average-interest screen).

#include "distinte/Gestione.h"
#include "ledger04/Gestione04.h"

namespace sorvane {

class GesDist4 : public Gestione04
{
    Q_OBJECT

public:
    explicit GesDist4(QWidget *padre = nullptr);

    QPushButton *cndEND() const { return m_cmdFine; }
    const CondizioneDistinte &UltimaCondizione() const { return m_condizione; }
    const FiltroDistinte &UltimoFiltro() const { return m_filtro; }

    void Estrai() override;
    void Stampa() override;

protected:
    Misura misuraFiltro(int indice) const override;
    void disponiFiltri(QGridLayout *g, QWidget *riquadro) override;
    QList<QWidget *> tabFiltri() const override;
    int campoCodiceFiltro() const override;
    std::int32_t clienteEstratto() const override { return m_filtro.cliente(); }
    void dopoModifica(bool eliminato) override;
    QString chiaveGriglia() const override;

private:
    void aggiorna();

    CondizioneDistinte m_condizione;
    FiltroDistinte m_filtro;
};

} // namespace sorvane
