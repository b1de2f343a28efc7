// SPDX-License-Identifier: MIT
// How large the program is drawn: Ctrl and plus or minus, Ctrl+Shift+0 for 100 %.
//
// Everything grows alike: the program's font and the widgets' own ones, the pixels of the style sheet, sizes, margins
// and spacings, pictures. A widget's measures at 100 % are taken when it is polished, before the style sheet acts.
#pragma once

#include <QHash>
#include <QObject>

#include <memory>

class QMainWindow;
class QWidget;

class Zoom : public QObject
{
    Q_OBJECT

public:
    static constexpr int kLeast = 80;
    static constexpr int kMost = 250;

    /// For a window that has no widgets yet. Starts at 100 %.
    explicit Zoom(QMainWindow &window);
    ~Zoom() override;

    /// Sets the program's style sheet and its font, both at 100 %.
    void dress(const QString &styleSheet);

    static int percent() { return s_percent; }
    /// Percentages beyond the limits become the limits. The window grows where it has to and stays within its screen.
    void set(int percent);
    /// The next larger or smaller step.
    void in();
    void out();

signals:
    void changed(int percent);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Measures;

    void addKeys();
    void adopt(QWidget &widget);

    static int s_percent;
    QMainWindow &m_window;
    QString m_styleSheet;
    QHash<const QObject *, std::shared_ptr<const Measures>> m_measures;
};

/// As many pixels at the current zoom; never none of some.
int zoomed(int pixels);

/// Keeps a widget, such as a picture with a fixed size, as it is at every zoom.
void keepUnzoomed(QWidget &widget);
