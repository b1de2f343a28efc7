// SPDX-License-Identifier: MIT
// The faults that the board has reported, as the entries of a selector.
#pragma once

#include <QAbstractListModel>
#include <QString>

#include <cstdint>
#include <vector>

/// One reported fault.
struct FccuFaultRecord {
    uint8_t id = 0;
    float time = 0; // as the board reports it
    QString source;
    QString description;
};

/// Only grows. Row k reads "Fault ID %1" with the identifier of record k.
class FaultHistory : public QAbstractListModel
{
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;

    void append(const std::vector<FccuFaultRecord> &records);
    const FccuFaultRecord &at(int row) const { return fccuHistory.at(static_cast<std::size_t>(row)); }

private:
    std::vector<FccuFaultRecord> fccuHistory;
};
