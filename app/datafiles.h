// SPDX-License-Identifier: MIT
// Where the program's own files are: manual, video, splash picture.
#pragma once

#include <QString>
#include <QStringList>

/// The folders that are looked in, in this order: the working directory, the program's folder, as in a build, and where an
/// installation keeps its data.
QStringList dataFolders();

/// Absolute path of the file that `path`, "./Video/GUI Tutorial.mp4", names in the first of `folders` that has it. Where
/// none has it, the path in the first one.
QString dataFile(const QString &path, const QStringList &folders = dataFolders());
