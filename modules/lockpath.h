// SPDX-License-Identifier: MIT
// Register protection as a picture: a write passes the soft lock, and what takes the soft lock off passes the hard lock.
#pragma once

#include <QLabel>

#include <optional>

class LockPath : public QLabel
{
public:
    LockPath();

    void show(bool softLocked, bool hardLocked);

    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    struct Locks {
        bool soft = false, hard = false;

        bool operator==(const Locks &) const = default;
    };
    std::optional<Locks> m_locks; // none until a report has come
};
