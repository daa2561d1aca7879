#pragma once

// A print run inside a test: the default modules, a local INI of its own,
// the preview way; each preview opened is recorded by its title and closed
// at once, so that nothing stays open. Everything put back at the end.

#include "frame/core/Impostazioni.h"
#include "frame/ui/Modale.h"
#include "reports/Anteprima.h"
#include "reports/CaricaDati.h"
#include "reports/Renderer.h"
#include "reports/Staging.h"
#include "store/Connessione.h"
#include "tests/reports/TestoPdf.h"

#include <QDialog>
#include <QStringList>

#include <gtest/gtest.h>

namespace sorvane::prova {

class StampeRegistrate
{
public:
    StampeRegistrate(const QString &moduli, const QString &iniLocale)
    {
        Impostazioni &imp = impostazioni();
        imp.PathReport = moduli + QLatin1Char('/');
        imp.PathReportOperatore.clear();
        imp.IniLocale = iniLocale;
        imp.TipoStampa = QLatin1Char('V');
        consegnaStampa() = ConsegnaStampa();
        installaGestoreModale([this](QDialog &d) {
            if (auto *f = qobject_cast<FinestraAnteprima *>(&d))
                f->attendiCompleta();
            titoli.append(d.windowTitle());
            return int(QDialog::Rejected);
        });
    }
    ~StampeRegistrate()
    {
        installaGestoreModale({});
        consegnaStampa() = ConsegnaStampa();
    }
    StampeRegistrate(const StampeRegistrate &) = delete;
    StampeRegistrate &operator=(const StampeRegistrate &) = delete;

    QStringList titoli; // of the previews opened
};

// The rows staged last, printed to PDF in cartella by the module of that
// name in moduli, read back page by page; empty when it could not be done.
inline QStringList PagineStampate(const QString &moduli, const QString &modulo,
                                  const QString &cartella)
{
    Modello modello;
    DatiReport dati;
    if (!CaricaModello(moduli + QLatin1Char('/') + modulo + QStringLiteral(".rpt"), modello)
        || !CaricaDatiReport(DbLavoro(), dati))
        return {};
    const ModelloCompilato compilato = CompilaModello(modello, dati);
    EXPECT_TRUE(compilato.errore.isEmpty()) << qPrintable(compilato.errore);
    const QString pdf = cartella + QLatin1Char('/') + modulo + QStringLiteral(".pdf");
    return SalvaPdf(pdf, modello, compilato) ? PagineTestoPdf(pdf) : QStringList();
}

} // namespace sorvane::prova
