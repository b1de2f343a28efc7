// SPDX-License-Identifier: MIT
// The recording that a verb is given, and the complaints about it.
#pragma once

#include "session/pcapng.h"

#include <QFile>

#include <optional>

struct Settings;

class RecordingFile
{
public:
    /// Opens the first argument. False, with the complaint made, where that fails, or where the same file is to be written.
    bool open(const Settings &settings);
    session::Reader &reader() { return *m_reader; }
    QFile &file() { return m_file; }
    /// After reading: complains of packets of other kinds, and of a file that is cut or damaged. False for the latter.
    bool isWhole() const;

private:
    QFile m_file;
    std::optional<session::Reader> m_reader;
};
