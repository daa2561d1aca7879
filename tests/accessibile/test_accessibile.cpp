// Each screen and pop-up is built on empty files and its whole widget tree
// walked, hidden panels included: what the accessibility bus would read as
// a nameless field is reported by screen and by widget.

#include "../store/ProvaAccesso.h"

#include "distinte/GesDist.h"
#include "distinte/InsDist.h"
#include "frame/main/Aggiorna.h"
#include "frame/main/InfZerlo.h"
#include "frame/main/Startup.h"
#include "ledger04/EleCli.h"
#include "ledger04/GesDist4.h"
#include "ledger04/GesIntMd.h"
#include "ledger04/InsSald4.h"
#include "lookup/ChkCliC.h"
#include "lookup/Datario.h"
#include "lookup/ListaCli.h"
#include "reports/Anteprima.h"
#include "reports/DatiReport.h"
#include "reports/Modello.h"
#include "tables/AggNazioni.h"
#include "tables/GesCambi.h"
#include "tables/GesCategorie.h"
#include "tables/GesProd.h"
#include "tables/GesTabel.h"
#include "tables/SchermoTabella.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QCalendarWidget>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>

#include <cstdint>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace sorvane::prova {

namespace {

// A widget Qt builds of parts of its own, which the widget names.
bool Composto(const QObject *w)
{
    return qobject_cast<const QComboBox *>(w) || qobject_cast<const QAbstractSpinBox *>(w)
           || qobject_cast<const QCalendarWidget *>(w)
           || qobject_cast<const QAbstractItemView *>(w);
}

bool DaNominare(const QWidget *w, const QWidget *radice)
{
    for (const QWidget *p = w->parentWidget(); p && p != radice; p = p->parentWidget())
        if (Composto(p))
            return false;
    return Composto(w) || qobject_cast<const QLineEdit *>(w) || qobject_cast<const QCheckBox *>(w)
           || qobject_cast<const QRadioButton *>(w);
}

// What the bus reads a widget as. A combo here reads as its current item:
// what it holds is told by its own name or by the label tied to it.
QString Nome(QWidget *w)
{
    QAccessibleInterface *a = QAccessible::queryAccessibleInterface(w);
    if (!a)
        return QString();
    if (!qobject_cast<QComboBox *>(w))
        return a->text(QAccessible::Name).trimmed();
    if (!w->accessibleName().isEmpty())
        return w->accessibleName();
    for (const auto &[etichetta, relazione] : a->relations(QAccessible::Label))
        if (!etichetta->text(QAccessible::Name).trimmed().isEmpty())
            return etichetta->text(QAccessible::Name);
    return QString();
}

// The fields without a name, as "objectName (class)".
QStringList SenzaNome(QWidget *radice)
{
    QStringList mancanti;
    for (QWidget *w : radice->findChildren<QWidget *>())
        if (DaNominare(w, radice) && Nome(w).isEmpty())
            mancanti << w->objectName() + QStringLiteral(" (")
                            + QString::fromLatin1(w->metaObject()->className()) + u')';
    return mancanti;
}

using Fabbrica = std::function<std::unique_ptr<QWidget>()>;

template <class T, class... A> Fabbrica Di(A... argomenti)
{
    return [=] { return std::unique_ptr<QWidget>(new T(argomenti...)); };
}

std::unique_ptr<QWidget> Anteprima()
{
    const Modello modello = LeggiModello(QStringLiteral("<p>Prova</p>"));
    return std::make_unique<FinestraAnteprima>(modello, CompilaModello(modello, DatiReport()),
                                               QStringLiteral("Prova"));
}

} // namespace

class Accessibile : public ProvaAccesso
{
};

TEST_F(Accessibile, OgniCampoDiOgniSchermoHaUnNome)
{
    tabelle().NomeTabella = QStringLiteral("DistCausali");
    const std::vector<std::pair<const char *, Fabbrica>> schermi{
        {"InsDist", Di<InsDist>()},
        {"GesDist", Di<GesDist>()},
        {"GesDist4", Di<GesDist4>()},
        {"GesIntMd", Di<GesIntMd>()},
        {"InsSald4", Di<InsSald4>()},
        {"EleCli", Di<EleCli>(QStringList{QStringLiteral("12 ROSSI MARIO")})},
        {"GesSoc", Di<riferimento::GesSoc>()},
        {"GesBanca", Di<riferimento::GesBanca>()},
        {"GesCauDs", Di<riferimento::GesCauDs>()},
        {"GesTabel", Di<GesTabel>()},
        {"GesCambi", Di<GesCambi>()},
        {"AggNazioni", Di<AggNazioni>()},
        {"GesProd", Di<GesProd>(nullptr, std::int16_t(0))},
        {"GesCategorie", Di<GesCategorie>(QStringLiteral("A"))},
        {"GesGruppi", Di<GesGruppi>(QStringLiteral("A"))},
        {"ListaCli", Di<ListaCli>()},
        {"Datario", Di<Datario>(nullptr, std::int16_t(0))},
        {"ChkCliC", Di<ChkCliC>()},
        {"Startup", Di<Startup>()},
        {"Aggiorna", Di<Aggiorna>()},
        {"InfZerlo", Di<InfZerlo>()},
        {"Anteprima", Anteprima},
    };
    for (const auto &[nome, fabbrica] : schermi) {
        const std::unique_ptr<QWidget> schermo = fabbrica();
        EXPECT_EQ(SenzaNome(schermo.get()).join(QStringLiteral(", ")).toStdString(), "") << nome;
    }
    tabelle().NomeTabella.clear();
}

} // namespace sorvane::prova
