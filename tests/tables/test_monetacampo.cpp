// F4 on the entry screen's currency field: the exchange screen opens as a
// picker on the movement's day, and the code chosen fills the field.

#include "../distinte/ProvaSchermi.h"

#include "distinte/InsDist.h"
#include "frame/ui/Modale.h"
#include "tables/GesCambi.h"

#include <QDialog>
#include <QLineEdit>
#include <QTableView>

namespace sorvane::prova {
namespace {

using MonetaDelCampo = ProvaSchermo<InsDist>;

TEST_F(MonetaDelCampo, F4SulCampoDellaMonetaPortaIlCodiceScelto)
{
    const QString nazione =
        QStringLiteral("INSERT INTO TabNazioni (Codice, Descrizione, TipoNaz, GesCmb) "
                       "VALUES (?, ?, ?, ?)");
    Scrivi(nazione, {QStringLiteral("EUR"), QStringLiteral("EURO"), "S", 1});
    Scrivi(nazione, {QStringLiteral("USD"), QStringLiteral("DOLLARO USA"), "N", 2});
    std::uint8_t modo = 0;
    double giorno = 0;
    installaGestoreModale([&](QDialog &d) {
        auto &cambi = dynamic_cast<GesCambi &>(d);
        modo = cambi.modo();
        giorno = cambi.giorno();
        QTableView *g = cambi.tdbgCambi();
        g->setCurrentIndex(g->model()->index(1, ColCodiceMoneta));
        QTest::keyClick(g, Qt::Key_Return);
        return d.result();
    });
    gesCambi().ModoCambi = CambiExtraEuro;
    InsDist &s = Apri();
    for (int campo : {1, 2, 3}) {
        Fuoco(s.txt(campo));
        QTest::keyClicks(s.txt(campo), QStringList{"15", "06", "2024"}[campo - 1]);
    }
    Fuoco(s.txt(CampoMoneta));
    s.txt(CampoMoneta)->setText(QStringLiteral("EUR"));
    Tasto(Qt::Key_F4);
    installaGestoreModale({});
    EXPECT_EQ(s.txt(CampoMoneta)->text(), "USD");
    EXPECT_EQ(modo, RicercaValute);
    EXPECT_EQ(giorno, Oggi);
    EXPECT_EQ(QApplication::focusWidget(), s.txt(CampoMoneta));
}

} // namespace
} // namespace sorvane::prova
