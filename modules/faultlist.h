// SPDX-License-Identifier: MIT
// The faults of the latest record, as the entries of a selector.
#pragma once

#include <QAbstractListModel>
#include <QStringList>

/// Row k reads "Fault %1" with k + 1; the fault's text is beside it.
class FaultList : public QAbstractListModel
{
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;

    /// Takes the place of all entries.
    void setTexts(const QStringList &texts);
    /// Empty for rows that there are not.
    QString text(int row) const { return m_texts.value(row); }

private:
    QStringList m_texts;
};
