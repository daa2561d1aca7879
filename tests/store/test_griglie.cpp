#include "store/Griglie.h"

#include "ProvaAccesso.h"
#include "frame/core/Valore.h"

#include <QHeaderView>
#include <QStandardItemModel>
#include <QTableView>
#include <gtest/gtest.h>

#include <memory>

using namespace sorvane;
using sorvane::prova::ProvaAccesso;

namespace {

// A grid of `colonne` columns, each 80 pixels wide as the screen sets it.
class Griglia
{
public:
    explicit Griglia(int colonne) : m_modello(3, colonne)
    {
        m_vista.setModel(&m_modello);
        for (int i = 0; i < colonne; ++i)
            m_vista.horizontalHeader()->resizeSection(i, 80);
    }
    QTableView *vista() { return &m_vista; }
    QHeaderView *intestazione() { return m_vista.horizontalHeader(); }
    int larghezza(int i) { return intestazione()->sectionSize(i); }

private:
    QStandardItemModel m_modello;
    QTableView m_vista;
};

class Layout : public ProvaAccesso
{
protected:
    QVariant Campo(const QString &chiave, int campo)
    {
        Recordset rs = Recordset::Apri(Db(), QStringLiteral("LayOutCol"));
        rs.SetIndex(QStringLiteral("primaria"));
        rs.Seek(QStringLiteral("="), chiave);
        return rs.NoMatch() ? QVariant() : rs.Fields(campo);
    }
};

} // namespace

TEST_F(Layout, LaPrimaVoltaLaGrigliaTieneIlDisegnoEIlSalvataggioCreaLaRiga)
{
    Griglia g(4);
    CaricaLayoutGriglia(g.vista(), QStringLiteral("TDBGrid1"), 0);
    EXPECT_EQ(g.larghezza(2), 80);
    EXPECT_FALSE(Campo(QStringLiteral("TDBGrid1"), 0).isValid());

    g.intestazione()->resizeSection(0, 120);
    g.intestazione()->resizeSection(3, 33);
    SalvaLayoutGriglia(g.vista(), QStringLiteral("TDBGrid1"), 0);
    EXPECT_EQ(Campo(QStringLiteral("TDBGrid1"), 1).toInt(), 1800); // twips
    EXPECT_EQ(Campo(QStringLiteral("TDBGrid1"), 4).toInt(), 495);
    EXPECT_TRUE(IsNull(Campo(QStringLiteral("TDBGrid1"), 5)));

    // Another grid of that key opens as it was left; another key doesn't.
    Griglia altra(4);
    CaricaLayoutGriglia(altra.vista(), QStringLiteral("TDBGrid1"), 0);
    EXPECT_EQ(altra.larghezza(0), 120);
    EXPECT_EQ(altra.larghezza(1), 80);
    EXPECT_EQ(altra.larghezza(3), 33);
    Griglia terza(4);
    CaricaLayoutGriglia(terza.vista(), QStringLiteral("TDBGrid2"), 0);
    EXPECT_EQ(terza.larghezza(0), 80);
    EXPECT_TRUE(m_messaggi.richieste().isEmpty());
}

TEST_F(Layout, LarghezzeNulleEColonneNascoste)
{
    Scrivi(QStringLiteral("INSERT INTO LayOutCol (LcChiave, LcCol00, LcCol01, LcCol02) "
                          "VALUES ('GridRic', 0, NULL, 1500)"));
    // Zero and Null leave the screen's width; a hidden list column takes its
    // width for when it shows.
    Griglia lista(4);
    lista.intestazione()->hideSection(2);
    CaricaLayoutLista(lista.vista(), QStringLiteral("GridRic"));
    EXPECT_EQ(lista.larghezza(0), 80);
    EXPECT_EQ(lista.larghezza(1), 80);
    EXPECT_TRUE(lista.intestazione()->isSectionHidden(2));
    lista.intestazione()->showSection(2);
    EXPECT_EQ(lista.larghezza(2), 100);

    // Saving: a hidden column keeps the width stored before.
    lista.intestazione()->hideSection(2);
    lista.intestazione()->resizeSection(0, 90);
    SalvaLayoutLista(lista.vista(), QStringLiteral("GridRic"));
    EXPECT_EQ(Campo(QStringLiteral("GridRic"), 1).toInt(), 1350);
    EXPECT_EQ(Campo(QStringLiteral("GridRic"), 3).toInt(), 1500);
}


TEST_F(Layout, UnaLarghezzaOltreSediciBitFermaIlSalvataggio)
{
    // The saving stops there; what came before stays.

    Griglia enorme(3);
    enorme.intestazione()->resizeSection(0, 60);
    enorme.intestazione()->resizeSection(1, 3000);
    SalvaLayoutGriglia(enorme.vista(), QStringLiteral("Enorme"), 0);
    EXPECT_EQ(Campo(QStringLiteral("Enorme"), 1).toInt(), 900);
    EXPECT_TRUE(IsNull(Campo(QStringLiteral("Enorme"), 2)));
    EXPECT_TRUE(IsNull(Campo(QStringLiteral("Enorme"), 3)));

    // Without the table the grid keeps its own widths and nothing is said.
    Scrivi(QStringLiteral("DROP TABLE LayOutCol"));
    Griglia senza(2);
    CaricaLayoutLista(senza.vista(), QStringLiteral("Larga"));
    SalvaLayoutLista(senza.vista(), QStringLiteral("Larga"));
    EXPECT_EQ(senza.larghezza(0), 80);
    EXPECT_TRUE(m_messaggi.richieste().isEmpty());
}
