// SPDX-License-Identifier: MIT
#include "modules/faultlist.h"

int FaultList::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_texts.size();
}

QVariant FaultList::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid) || role != Qt::DisplayRole)
        return {};
    return QStringLiteral("Fault %1").arg(index.row() + 1);
}

// Rows go and come, no reset: a selector then selects the first new one by itself.
void FaultList::setTexts(const QStringList &texts)
{
    if (!m_texts.isEmpty()) {
        beginRemoveRows({}, 0, m_texts.size() - 1);
        m_texts.clear();
        endRemoveRows();
    }
    if (!texts.isEmpty()) {
        beginInsertRows({}, 0, texts.size() - 1);
        m_texts = texts;
        endInsertRows();
    }
}
