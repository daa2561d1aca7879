#pragma once

// The export's file in the making: UTF-8 with its byte-order mark, every
// field followed by ";", lines ended as the platform ends text lines. Lines
// gather as bytes in one block that goes to the disk a megabyte at a time;
// most fields are plain ASCII and go in without a QString in between.

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QStringList>
#include <QStringView>

namespace sorvane {

class FileCsv
{
public:
    static constexpr char Separatore = ';';

    explicit FileCsv(const QString &percorso);

    // Makes the file anew; false with the system's words in *errore.
    bool apri(QString *errore);
    // A whole line of fields.
    bool riga(const QStringList &campi, QString *errore);
    // One field and its separator, quoted when it has to be.
    void campo(QStringView testo);
    // A field already made of ASCII bytes that need no quotes (a number, a date).
    void campoAscii(const char *testo, qsizetype n)
    {
        m_blocco.append(testo, n);
        m_blocco.append(Separatore);
    }
    bool fineRiga(QString *errore);
    bool chiudi(QString *errore);

private:
    static constexpr qsizetype Blocco = 1024 * 1024;

    bool svuota(QString *errore);
    bool fallita(QString *errore);

    QFile m_file;
    QByteArray m_blocco;
};

} // namespace sorvane
