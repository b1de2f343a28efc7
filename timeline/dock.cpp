// SPDX-License-Identifier: MIT
#include "timeline/dock.h"

#include "app/mainwindow.h"
#include "app/messagebox.h"
#include "protocol/fccu.h"
#include "timeline/exports.h"
#include "timeline/view.h"

#include <QComboBox>
#include <QDateTime>
#include <QDir>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QScreen>
#include <QShortcut>
#include <QToolButton>
#include <QVBoxLayout>

namespace timeline {

namespace {

constexpr double kZoomStep = 1.6;
constexpr char kHint[] = "Wheel: zoom.  Drag: move.  A click on a red bar selects the fault.  "
                         "Left, Right: the fault before, behind.";

// Endings in the order of the filters.
constexpr const char *endings[] = {"csv", "svg", "png"};
constexpr char kFilters[] = "Fault log (*.csv);;Picture (*.svg);;Picture (*.png)";

QString wordsOf(const Fault &fault)
{
    const auto text = protocol::fccu::recordedText(fault.id);
    return QStringLiteral("%1 · Fault ID %2 · %3 · detected after %4 µs\n%5")
        .arg(clockText(fault.time, 6))
        .arg(fault.id)
        .arg(text.source.trimmed())
        .arg(static_cast<double>(fault.us), 0, 'f', 2)
        .arg(text.description.trimmed());
}

} // namespace

Dock::Dock(QComboBox &history, QWidget *parent)
    : QDockWidget(QStringLiteral("Time line"), parent),
      m_history(history),
      m_view(new View(m_observer, this)),
      m_details(new QLabel(QString::fromUtf8(kHint), this))
{
    setObjectName(QStringLiteral("timeLine"));
    auto *content = new QWidget(this);
    auto *rows = new QVBoxLayout(content);
    rows->setContentsMargins(8, 4, 8, 8);
    auto *tools = new QHBoxLayout;
    addTools(*tools);
    rows->addLayout(tools);
    rows->addWidget(m_view, 1);
    setWidget(content);
    connect(m_view, &View::chosen, this, &Dock::choose);
    connect(&history, qOverload<int>(&QComboBox::currentIndexChanged), this, &Dock::showSelected);
}

void Dock::addTools(QHBoxLayout &row)
{
    m_details->setObjectName(QStringLiteral("timeLineDetails"));
    m_details->setAccessibleName(QStringLiteral("Selected fault"));
    m_details->setTextFormat(Qt::PlainText);
    m_details->setWordWrap(true);
    m_details->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_details->setMinimumHeight(2 * m_details->fontMetrics().lineSpacing());
    m_follow = addButton(row, QStringLiteral("Follow"), QStringLiteral("timeLineFollow"),
                         QStringLiteral("Keep the present in sight (End)"));
    m_follow->setCheckable(true);
    m_follow->setChecked(true);
    connect(m_follow, &QToolButton::clicked, m_view, &View::follow);
    connect(m_view, &View::followingChanged, m_follow, &QToolButton::setChecked);
    connect(addButton(row, QStringLiteral("All"), QStringLiteral("timeLineAll"),
                      QStringLiteral("Show all that has happened (A)")),
            &QToolButton::clicked, m_view, &View::showAll);
    connect(addButton(row, QStringLiteral("+"), QStringLiteral("timeLineCloser"), QStringLiteral("Closer (+)")),
            &QToolButton::clicked, m_view, [this] { m_view->zoom(1 / kZoomStep); });
    connect(addButton(row, QStringLiteral("−"), QStringLiteral("timeLineFarther"), QStringLiteral("Farther (-)")),
            &QToolButton::clicked, m_view, [this] { m_view->zoom(kZoomStep); });
    row.addWidget(m_details, 1);
    connect(addButton(row, QStringLiteral("Export…"), QStringLiteral("timeLineExport"),
                      QStringLiteral("Save the fault log or the picture")),
            &QToolButton::clicked, this, &Dock::askAndExport);
}

QToolButton *Dock::addButton(QHBoxLayout &row, const QString &text, const QString &name, const QString &hint)
{
    auto *button = new QToolButton(this);
    button->setText(text);
    button->setObjectName(name);
    button->setToolTip(hint);
    button->setAccessibleName(text.size() > 1 ? text : hint);
    button->setFocusPolicy(Qt::TabFocus);
    row.addWidget(button, 0, Qt::AlignTop);
    return button;
}

void Dock::toggle()
{
    if (isVisible()) {
        hide();
        return;
    }
    place();
    show();
    raise();
    m_view->setFocus();
}

// Beneath the pages where they can spare the room; else a window of its own.
void Dock::place()
{
    if (m_placed)
        return;
    m_placed = true;
    const QWidget &window = *parentWidget();
    const int spare = window.height() - window.minimumSizeHint().height();
    if (spare >= minimumSizeHint().height())
        return;
    setFloating(true);
    const QRect room = window.screen()->availableGeometry();
    const QSize size = QSize(window.width() * 3 / 4, sizeHint().height()).boundedTo(room.size());
    const QPoint corner = window.geometry().bottomRight() - QPoint(size.width() + 24, size.height() + 48);
    setGeometry(QRect(QPoint(std::max(corner.x(), room.left()), std::max(corner.y(), room.top())), size));
}

// The history may lag behind within an arrival.
void Dock::choose(int fault)
{
    if (fault < m_history.count())
        m_history.setCurrentIndex(fault);
    showSelected(fault);
}

void Dock::showSelected(int fault)
{
    m_view->select(fault);
    if (m_view->selected() < 0)
        return;
    m_details->setText(wordsOf(m_observer.chronicle().faults()[static_cast<std::size_t>(fault)]));
    m_view->setAccessibleDescription(m_details->text());
}

QString Dock::exportTo(const QString &path) const
{
    if (path.endsWith(QLatin1String(".csv"), Qt::CaseInsensitive))
        return saveLog(path, m_observer.chronicle());
    return savePicture(path, m_observer.chronicle(), m_view->span(), m_view->size(), m_view->selected());
}

void Dock::askAndExport()
{
    const QString name =
        QDir::home().filePath(QDateTime::currentDateTime().toString(QStringLiteral("'faults-'yyyy-MM-dd-HHmmss")));
    auto *dialog = new QFileDialog(window(), QStringLiteral("Export the time line"), name, QLatin1String(kFilters));
    dialog->setObjectName(QStringLiteral("exportTimeLineDialog"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setDefaultSuffix(QLatin1String(endings[0]));
    dialog->selectFile(name);
    connect(dialog, &QFileDialog::filterSelected, dialog, [dialog](const QString &filter) {
        dialog->setDefaultSuffix(QLatin1String(endings[dialog->nameFilters().indexOf(filter)]));
    });
    connect(dialog, &QFileDialog::fileSelected, this, [this](const QString &path) {
        const QString trouble = exportTo(path);
        if (!trouble.isEmpty())
            inform(window(), QStringLiteral("Warning"), QStringLiteral("The time line was not saved.\n") + trouble,
                   QMessageBox::Ok);
    });
    dialog->open();
}

} // namespace timeline

void MainWindow::makeTimeLine()
{
    auto *dock = new timeline::Dock(*findChild<QComboBox *>(QStringLiteral("comboBox_FaultID")), this);
    addDockWidget(Qt::BottomDockWidgetArea, dock);
    dock->hide();
    auto *key = new QShortcut(QKeySequence(QStringLiteral("Ctrl+T")), this);
    key->setWhatsThis(QStringLiteral("Open and close the time line"));
    connect(key, &QShortcut::activated, dock, &timeline::Dock::toggle);
}
