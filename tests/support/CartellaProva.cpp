#include "support/CartellaProva.h"

#include <QDir>
#include <QFileInfo>
#include <QFile>

namespace sorvane::prova {

CartellaProva::CartellaProva() = default;

QString CartellaProva::file(const QString &nome) const
{
    return QDir(m_dir.path()).filePath(nome);
}

QString CartellaProva::scrivi(const QString &nome, const QByteArray &contenuto) const
{
    const QString p = file(nome);
    QDir().mkpath(QFileInfo(p).absolutePath());
    QFile f(p);
    if (f.open(QIODevice::WriteOnly | QIODevice::Truncate))
        f.write(contenuto);
    return p;
}

QByteArray CartellaProva::leggi(const QString &nome) const
{
    QFile f(file(nome));
    if (!f.open(QIODevice::ReadOnly))
        return {};
    return f.readAll();
}

} // namespace sorvane::prova
