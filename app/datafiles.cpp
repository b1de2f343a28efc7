// SPDX-License-Identifier: MIT
#include "app/datafiles.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

QStringList dataFolders()
{
    const QString programs = QCoreApplication::applicationDirPath();
    return {QDir::currentPath(), programs, programs + QStringLiteral("/" WORKBENCH_DATA)};
}

QString dataFile(const QString &path, const QStringList &folders)
{
    for (const QString &folder : folders) {
        QString file = QDir(folder).absoluteFilePath(path);
        if (QFileInfo(file).isFile())
            return file;
    }
    return QDir(folders.value(0)).absoluteFilePath(path);
}
