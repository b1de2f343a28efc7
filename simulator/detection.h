// SPDX-License-Identifier: MIT
// How long each safety mechanism takes to detect its fault.
#pragma once

#include <QtGlobal>

#include <array>

namespace simulator {

/// One row for a run of fault sources. A fault is detected after `us` to `us + spread` microseconds; a watchdog's
/// time-out and an interrupt's latency come on top.
struct Detection {
    quint8 first;
    quint8 last;
    double us;
    double spread;
    const char *why;
};

/// Clocks that the times are counted in.
inline constexpr double kBusUs = 1 / 120.0;      // a cycle of the bus
inline constexpr double kCoreUs = 1 / 240.0;     // a cycle of a core
inline constexpr double kReferenceUs = 1 / 16.0; // a period of the internal oscillator

// clang-format off
inline constexpr std::array detections = std::to_array<Detection>({
    {0, 0, 20, 4, "the sensor's comparator answers behind a filter of 20 us"},
    {1, 2, 48 * kReferenceUs, 0.5, "the detector's comparator answers behind a glitch filter of 48 reference periods"},
    {3, 3, kReferenceUs, kReferenceUs, "a reference period after the detector's self-test has run"},
    {4, 5, 120, 5, "each record is read back once while it is loaded"},
    {6, 8, 35000, 50, "told at the end of the offline self-tests"},
    {9, 9, 2 * kBusUs, kBusUs, "the debug port's state is compared in each bus cycle"},
    {10, 12, 4 * kCoreUs, kCoreUs, "the checker core runs two cycles behind, its comparison takes two more"},
    {13, 15, kReferenceUs, kReferenceUs, "a count of 16 MHz after the time-out has run; a refused access at once"},
    {16, 21, kBusUs, kBusUs, "ECC is checked in the bus cycle of the read"},
    {22, 24, 6 * kBusUs, kBusUs, "ECC is checked as the flash answers, after five wait states"},
    {25, 26, 512 / 40.0, 3, "the lock detector compares 512 periods of the 40 MHz crystal"},
    {27, 27, 16 * kReferenceUs, 0.5, "no edge of the crystal within 16 reference periods"},
    {28, 39, 64 * kReferenceUs, 64 * kReferenceUs, "edges are counted over 64 reference periods: one to two counts"},
    {40, 40, 8 * kReferenceUs, kReferenceUs, "the pin's input filter takes 8 reference periods"},
    {41, 45, 6 * kBusUs, kBusUs, "checked with the flash's answer, after five wait states"},
    {46, 50, 2 * kBusUs, kBusUs, "the syndrome is computed in the data phase of the transfer"},
    {51, 58, kBusUs, kBusUs, "the RAM's feedback is compared in the cycle of the access"},
    {59, 62, 2 * kBusUs, kBusUs, "test signals are compared in each bus cycle"},
    {63, 64, 6 * kCoreUs, 2 * kCoreUs, "a machine check is taken within six core cycles"},
    {65, 65, 2 * kReferenceUs, kReferenceUs, "a request, synchronised to the reference"},
    {66, 73, 25, 5, "one pass of the converter's self-test"},
    {74, 74, 2 * kReferenceUs, kReferenceUs, "a request, synchronised to the reference"},
    {75, 83, kBusUs, kBusUs, "a count of 120 MHz after the latency has passed"},
    {84, 86, 6 * kCoreUs, 2 * kCoreUs, "a machine check is taken within six core cycles"},
    {87, 87, 64 * kReferenceUs, 64 * kReferenceUs, "edges are counted over 64 reference periods: one to two counts"},
    {88, 88, 16 * kReferenceUs, 0.5, "no edge of the crystal within 16 reference periods"},
    {89, 89, 512 / 40.0, 3, "the lock detector compares 512 periods of the 40 MHz crystal"},
    {90, 90, 16 * kReferenceUs, 0.5, "no edge of the crystal within 16 reference periods"},
    {91, 91, 200, 10, "read once while the flash starts"},
    {92, 94, 6 * kBusUs, kBusUs, "checked with the flash's answer, after five wait states"},
    {95, 103, 2 * kCoreUs, kBusUs, "data sent to a cache or a TCM is compared as it comes back"},
    {104, 105, kBusUs, kBusUs, "rights are checked in the address phase of the access"},
    {106, 111, 2 * kBusUs, kBusUs, "the syndrome is computed in the data phase of the transfer"},
    {112, 114, kReferenceUs, kReferenceUs, "a count of 16 MHz after the time-out has run"},
    {115, 115, 4096 / 200.0, 0.5, "the check passes 4096 words of the twiddle RAM at 200 MHz"},
    {116, 120, kBusUs, kBusUs, "told with the next read of the memory"},
    {121, 121, kBusUs, kBusUs, "parity is checked in the cycle of the read"},
    {122, 126, kBusUs, kBusUs, "told with the next read of the memory"},
    {127, 127, 2 * kBusUs, kBusUs, "the syndrome is computed in the data phase of the transfer"},
    {128, 255, kBusUs, kBusUs, "no mechanism has this number"},
});
// clang-format on

/// The row of a fault source: each has one.
const Detection &detectionOf(quint8 source);

} // namespace simulator
