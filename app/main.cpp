#include "frame/core/Locale.h"
#include "frame/core/Messaggi.h"
#include "frame/ui/MessaggiQt.h"

#include <QApplication>
#include <QLabel>
#include <QMainWindow>

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("sorvane"));
    sorvane::ImpostaLocaleProgramma();
    sorvane::MessaggiQt risponditore;
    sorvane::installaMessaggi(&risponditore);

    // Placeholder frame until the main window lands.
    QMainWindow finestra;
    finestra.setWindowTitle(QStringLiteral("SORVANE"));
    auto *etichetta = new QLabel(QStringLiteral("SORVANE"), &finestra);
    etichetta->setAlignment(Qt::AlignCenter);
    finestra.setCentralWidget(etichetta);
    finestra.resize(800, 600);
    finestra.show();
    const int esito = app.exec();
    sorvane::installaMessaggi(nullptr);
    return esito;
}
