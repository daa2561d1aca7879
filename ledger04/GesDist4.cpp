#include "ledger04/GesDist4.h"

#include "distinte/CampiData.h"
#include "frame/core/Messaggi.h"
#include "frame/ui/Cursore.h"
#include "frame/ui/Schermo.h"
#include "ledger04/ControllaCampo4.h"
#include "ledger04/Distinte04.h"
#include "ledger04/EleCli.h"
#include "ledger04/ModelloDistinte04.h"
#include "ledger04/StampaDistinta04.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLineEdit>
#include <QTableView>

namespace sorvane {

GesDist4::GesDist4(QWidget *padre)
    : Gestione04(Campo04NomeFiltro, QStringLiteral("cndEND"), padre)
{
    setObjectName(QStringLiteral("GesDist4"));
    setWindowTitle(QStringLiteral("GESTIONE DISTINTA DOCUMENTI 04"));
    costruisci();
}

QString GesDist4::chiaveGriglia() const { return QStringLiteral("GesDist4TDBGrid1"); }

int GesDist4::campoCodiceFiltro() const { return Campo04CodiceFiltro; }

Gestione04::Misura GesDist4::misuraFiltro(int indice) const
{
    if (indice == Campo04CodiceFiltro)
        return {8, 6, "Codice cliente del filtro", ModoCifre};
    return {35, 28, "Nome cliente del filtro", ModoTesto};
}

void GesDist4::disponiFiltri(QGridLayout *g, QWidget *riquadro)
{
    g->addWidget(EtichettaCampo(QStringLiteral("Dal "), riquadro), 0, 0);
    g->addLayout(filaData(1), 0, 1);
    g->addWidget(EtichettaCampo(QStringLiteral("al "), riquadro), 0, 2);
    g->addLayout(filaData(2), 0, 3);
    g->addWidget(EtichettaCampo(QStringLiteral("Cliente"), riquadro), 1, 0);
    g->addLayout(InFila({m_txt[16], m_txt[17], m_chkClose}), 1, 1, 1, 3);
    g->addWidget(EtichettaCampo(QStringLiteral("Gruppo"), riquadro), 1, 4);
    g->addLayout(InFila({m_lbTeam}), 1, 5);
    g->addWidget(EtichettaCampo(QStringLiteral("Ditta"), riquadro), 2, 0);
    g->addLayout(InFila({m_cmbSoc1}), 2, 1, 1, 3);
    g->setColumnStretch(5, 1);
}

QList<QWidget *> GesDist4::tabFiltri() const
{
    QList<QWidget *> ordine;
    for (int i = Campo04GiornoDal; i <= Campo04NomeFiltro; ++i)
        ordine.append(m_txt[i]);
    return ordine << m_chkClose;
}

void GesDist4::Estrai()
{
    CursoreAttesa();
    m_filtro = FiltroDistinte{};
    m_filtro.dal = DataDeiCampi(m_txt, {Campo04GiornoDal, Campo04MeseDal, Campo04AnnoDal});
    m_filtro.al = DataDeiCampi(m_txt, {Campo04GiornoAl, Campo04MeseAl, Campo04AnnoAl});
    m_filtro.codiceCliente = m_txt[Campo04CodiceFiltro]->text();
    m_filtro.nomeCliente = m_txt[Campo04NomeFiltro]->text();
    m_filtro.ditta = m_cmbSoc1->currentText();
    m_condizione = CondizioneEstrazione04(m_filtro, GiornoOggi());
    QString errore;
    if (!m_data1->Carica(QueryLista04(m_condizione), m_condizione.parametri, &errore)) {
        CursoreNormale();
        Messaggio(QStringLiteral("ERRORE IN ESTRAZIONE DEI MOVIMENTI\n") + errore, QString(),
                  Icona::Stop);
    }
    m_grid->scrollToTop();
    aggiornaPulsanti();
    CursoreNormale();
}

void GesDist4::aggiorna()
{
    const int riga = m_grid->currentIndex().row();
    m_data1->Aggiorna(riga + 1);
    if (riga >= 0 && m_data1->rowCount() > 0)
        m_grid->setCurrentIndex(m_data1->index(std::min(riga, m_data1->rowCount() - 1), 0));
    aggiornaPulsanti();
}

void GesDist4::dopoModifica(bool eliminato)
{
    if (!eliminato && m_condizione.vuota())
        Estrai();
    else
        aggiorna();
}

void GesDist4::Stampa()
{
    // The rows are the list's; the firm, client and team are the fields'
    // as they stand now.
    SchermoEstratto04 s;
    s.estrazione = m_condizione;
    s.dataDal = m_filtro.dal;
    s.dataAl = m_filtro.al;
    s.ditta = m_cmbSoc1->currentText();
    s.codiceCliente = m_txt[Campo04CodiceFiltro]->text();
    s.nomeCliente = m_txt[Campo04NomeFiltro]->text();
    s.squadra = m_lbTeam->text();
    m_controllo->base.ClienteCorrente = s.cliente();
    if (m_data1->rowCount() <= 0)
        return;
    occupa(true);
    StampaDistinta04(s);
    occupa(false);
}

} // namespace sorvane
