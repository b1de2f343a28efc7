// SPDX-License-Identifier: MIT
// What is kept of the voltage detectors.
#pragma once

#include "protocol/pmc.h"

struct PmcPanel {
    protocol::pmc::DetectorBits pmcDetectorBits = {};
    QStringList pmcFaultRecords; // entry k is item k of the record selector
};
