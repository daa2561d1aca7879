#pragma once

// A PDF read back as a reader would copy its text, page by page.

#include <QProcess>
#include <QString>
#include <QStringList>

namespace sorvane::prova {

// The text of each page, laid out as on paper (pdftotext -layout). It is
// in compatibility form, so that what a font draws as one ligature ("fi",
// "ff") reads as its letters, whichever fonts the machine has.
inline QStringList PagineTestoPdf(const QString &file)
{
    QProcess lettore;
    lettore.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), file, QStringLiteral("-")});
    if (!lettore.waitForFinished(60000))
        return {};
    QStringList pagine = QString::fromUtf8(lettore.readAllStandardOutput())
                             .normalized(QString::NormalizationForm_KC)
                             .split(QLatin1Char('\f'));
    while (!pagine.isEmpty() && pagine.constLast().trimmed().isEmpty())
        pagine.removeLast();
    return pagine;
}

// The fonts the file carries, as pdffonts names them ("ABCDEF+LiberationSans").
inline QString CaratteriPdf(const QString &file)
{
    QProcess lettore;
    lettore.start(QStringLiteral("pdffonts"), {file});
    return lettore.waitForFinished(60000) ? QString::fromUtf8(lettore.readAllStandardOutput())
                                          : QString();
}

} // namespace sorvane::prova
