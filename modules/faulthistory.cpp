// SPDX-License-Identifier: MIT
#include "modules/faulthistory.h"

#include "protocol/fccu.h"

int FaultHistory::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(fccuHistory.size());
}

QVariant FaultHistory::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid) || role != Qt::DisplayRole)
        return {};
    return protocol::fccu::titleOf(at(index.row()).id);
}

void FaultHistory::append(const std::vector<FccuFaultRecord> &records)
{
    if (records.empty())
        return;
    beginInsertRows({}, rowCount(), rowCount() + static_cast<int>(records.size()) - 1);
    fccuHistory.insert(fccuHistory.end(), records.begin(), records.end());
    endInsertRows();
}
