// SPDX-License-Identifier: MIT
// Knowing an adapter again after it was unplugged, whatever it is called now.
#pragma once

#include "link/serialports.h"

#include <QByteArray>

struct PortIdentity {
    PortInfo port;
    int sibling = 0;      // its place among the ports that are told apart by nothing but their order
    QByteArray linkStamp; // of a symbolic link: which link it was
};

/// Who the port with this name is, as long as it is there.
PortIdentity identityOf(const QString &portName);

/// The name under which the same device is there now; empty where it is not, or where that is not certain:
/// - an adapter with a serial number: the same identifiers and number, the same one of several ports;
/// - one with identifiers alone: the same identifiers, and the same name where there are several;
/// - others: the same name; a symbolic link that has been made anew.
QString nameNow(const PortIdentity &identity);

/// False for a pseudo-terminal under its own name: its number may be anybody's next time.
bool canComeBack(const QString &portName);
