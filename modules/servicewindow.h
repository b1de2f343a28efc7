// SPDX-License-Identifier: MIT
// A watchdog's cycle as a picture: when it is too early for the service, when it is served, when it is too late.
#pragma once

#include <QLabel>

class ServiceWindow : public QLabel
{
public:
    ServiceWindow() { setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding); }

    /// In milliseconds since the last service: the window from `opens` to `closes`, the time-out.
    struct Times {
        quint32 opens = 0, closes = 0, timeout = 0;

        bool operator==(const Times &) const = default;
    };
    void show(const Times &times, bool on);

    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    double across(quint32 ms) const;
    QRectF bar(quint32 from, quint32 to) const;
    void paintSpan(QPainter &painter, quint32 from, quint32 to, QRgb colour, const QString &words) const;
    void paintTimeout(QPainter &painter) const;
    void paintTimes(QPainter &painter) const;

    bool m_known = false; // nothing is painted until a report has come
    Times m_times;
    bool m_on = false;
};
