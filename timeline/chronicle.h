// SPDX-License-Identifier: MIT
// What has happened to the chip since the program started, with its times: faults, what brought them about and what took
// them away, restarts, and when nobody listened. Times are nanoseconds since 1970, UTC, and never go back.
#pragma once

#include "protocol/fccu.h"
#include "protocol/moduleid.h"

#include <QString>

#include <array>
#include <vector>

namespace timeline {

/// The rows of the time line, each with the module that it stands for. Fccu has the faults without a module of their own,
/// Reset the chip itself.
// clang-format off
inline constexpr std::array kBands = {
    protocol::ModuleId::Cmu,   protocol::ModuleId::Xbic, protocol::ModuleId::Smpu, protocol::ModuleId::Memu,
    protocol::ModuleId::Intcm, protocol::ModuleId::Pmc,  protocol::ModuleId::Swt,  protocol::ModuleId::Spt,
    protocol::ModuleId::Fccu,
    protocol::ModuleId::Reset};
// clang-format on
inline constexpr int kBandCount = static_cast<int>(kBands.size());
inline constexpr int kChipBand = kBandCount - 1;
/// A row's name, "CMU"; "Others" and "Chip" for the last two.
QString nameOfBand(int band);

struct Fault {
    qint64 time = 0;
    float us = 0; // detection time, as the board reports it
    quint8 id = 0;
    quint8 band = 0;
};

/// A command that was sent, or what the board said of a restart.
struct Happening {
    qint64 time = 0;
    quint8 band = 0;
    QString text;
};

/// Nobody was there to hear the board.
struct Gap {
    qint64 from = 0;
    qint64 to = 0; // 0: it still lasts
    QString reason;
};

/// Detection times fall into bins: eight per factor of ten.
inline constexpr int kBinsPerDecade = 8;
inline constexpr int kFirstDecade = -3; // 0.001 us
inline constexpr int kDecades = 9;      // to 1 s
inline constexpr int kBins = kBinsPerDecade * kDecades;
/// Times beyond either end, and what is no time, fall into the first or the last bin.
int binOf(float us);
/// Where a bin begins, in microseconds.
double startOfBin(int bin);
using Histogram = std::array<quint32, kBins>;

/// Kinds of marks with a sorted list of times per band.
enum class Mark : quint8 { Injection, Fault, Clear, Restart };
inline constexpr int kMarkCount = 4;

class Chronicle
{
public:
    void addFault(qint64 time, const protocol::fccu::FaultEvent &fault);
    /// A command line; those that neither inject, clear nor reset are passed over.
    void addCommand(qint64 time, const QString &line);
    void addRestart(qint64 time);
    void beginGap(qint64 time, const QString &reason);
    void endGap(qint64 time);

    /// In the order of the window's fault history: row k there is fault k here.
    const std::vector<Fault> &faults() const { return m_faults; }
    /// Injections, clears, resets, in the order in which they were sent.
    const std::vector<Happening> &happenings() const { return m_happenings; }
    const std::vector<Gap> &gaps() const { return m_gaps; }

    const std::vector<qint64> &times(int band, Mark mark) const;
    /// Number in faults() of each of the band's faults.
    const std::vector<quint32> &faultNumbers(int band) const;
    /// The band's detection times from `from` to before `to`.
    Histogram histogram(int band, qint64 from, qint64 to) const;

    bool isEmpty() const { return m_last == 0; }
    qint64 first() const { return m_first; }
    qint64 last() const { return m_last; }

private:
    struct Band {
        std::array<std::vector<qint64>, kMarkCount> times;
        std::vector<quint32> faultNumbers;
        std::vector<quint8> bins; // of each fault
    };

    qint64 noted(qint64 time);
    void add(int band, Mark mark, qint64 time);

    std::array<Band, kBandCount> m_bands;
    std::vector<Fault> m_faults;
    std::vector<Happening> m_happenings;
    std::vector<Gap> m_gaps;
    qint64 m_first = 0;
    qint64 m_last = 0;
};

} // namespace timeline
