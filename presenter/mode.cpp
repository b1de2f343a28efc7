// SPDX-License-Identifier: MIT
#include "presenter/mode.h"

#include "app/datafiles.h"
#include "app/mainwindow.h"
#include "app/messagebox.h"
#include "app/zoom.h"
#include "presenter/speaker.h"

#include <QApplication>
#include <QBoxLayout>
#include <QEvent>
#include <QScreen>
#include <QScrollArea>
#include <QShortcut>
#include <QStatusBar>
#include <QToolButton>

#include <algorithm>

namespace presenter {

namespace {

// What an audience has no use for: the side panel, and the log beside the fault's state.
constexpr const char *foldedWidgets[] = {"widget_sidePanel", "label_fccurecord", "textBrowser_fccurecord"};

constexpr double kSlack = 0.97; // sizes are rounded to whole pixels, in many places

QToolButton *newButton(QMainWindow &window)
{
    auto *button = new QToolButton(&window);
    button->setObjectName(QStringLiteral("presentButton"));
    button->setText(QStringLiteral("Present"));
    button->setToolTip(QStringLiteral("Presenter mode: full screen, and the story of the last fault (F11)"));
    button->setAccessibleName(QStringLiteral("Presenter mode"));
    button->setCheckable(true);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    window.statusBar()->addPermanentWidget(button);
    return button;
}

} // namespace

Mode::Mode(QMainWindow &window)
    : QObject(&window),
      m_window(window),
      m_banner(new Banner(window)),
      m_button(newButton(window)),
      m_leave(new QShortcut(QKeySequence(Qt::Key_Escape), &window))
{
    setObjectName(QStringLiteral("presenterMode"));
    m_leave->setEnabled(false);
    m_pointer.setSingleShot(true);
    m_pointer.setInterval(kPointerMs);
    connect(&m_teller, &Teller::changed, this, [this] { m_banner->setStory(m_teller.story()); });
    connect(m_button, &QToolButton::clicked, this, &Mode::toggle);
    connect(m_leave, &QShortcut::activated, this, &Mode::end);
    auto *key = new QShortcut(QKeySequence(Qt::Key_F11), &window);
    key->setWhatsThis(QStringLiteral("Begin and end presenter mode"));
    m_leave->setWhatsThis(QStringLiteral("Leave presenter mode"));
    connect(key, &QShortcut::activated, this, &Mode::toggle);
    connect(&m_pointer, &QTimer::timeout, this, &Mode::hidePointer);
}

Mode::~Mode()
{
    showPointer();
}

void Mode::begin()
{
    if (m_on)
        return;
    m_on = true;
    m_before = m_window.windowState();
    m_placeBefore = m_window.geometry();
    m_percentBefore = Zoom::percent();
    foldAll();
    m_banner->setScreenHeight(m_window.screen()->geometry().height());
    m_banner->show();
    fitScreen();
    m_button->setChecked(true);
    m_leave->setEnabled(true);
    qApp->installEventFilter(this);
    m_pointer.start();
    emit begun();
}

void Mode::end()
{
    if (!m_on)
        return;
    m_on = false;
    qApp->removeEventFilter(this);
    m_pointer.stop();
    showPointer();
    m_leave->setEnabled(false);
    m_button->setChecked(false);
    m_banner->hide();
    scrollPages(false);
    if (auto *zoom = m_window.findChild<Zoom *>(); zoom && Zoom::percent() != m_percentBefore)
        zoom->set(m_percentBefore);
    unfoldAll();
    place(m_placeBefore, m_before & ~Qt::WindowFullScreen);
    emit ended();
}

// Where not all fits, first the box with the unit's state goes, which the banner tells, too, then the status bar; on a
// still smaller screen the pages scroll. A desktop without a window manager leaves the size to us.
void Mode::fitScreen()
{
    const QRect screen = m_window.screen()->geometry();
    const auto fits = [&] {
        QApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest); // sizes of what has just been folded
        return least().height() <= screen.height();
    };
    for (const char *name : {"groupBox_FCCU", "statusBar"}) {
        if (!fits())
            fold(name);
    }
    if (fits())
        enlarge();
    else
        scrollPages(true);
    place(screen, m_before | Qt::WindowFullScreen);
}

// Room for all of the pages, also where they scroll.
QSize Mode::least() const
{
    const QSize size = m_window.minimumSizeHint();
    const auto *scroller = qobject_cast<QScrollArea *>(m_window.centralWidget());
    return scroller ? size - scroller->minimumSizeHint() + scroller->widget()->minimumSizeHint() : size;
}

// As much as the screen has room for; the banner keeps its own measure.
void Mode::enlarge()
{
    auto *zoom = m_window.findChild<Zoom *>();
    m_percentBefore = Zoom::percent();
    const QSize needed = least();
    const QSize room = m_window.screen()->geometry().size();
    const int banner = m_banner->sizeHint().height();
    const double factor = std::min(static_cast<double>(room.width()) / needed.width(),
                                   static_cast<double>(room.height() - banner) / (needed.height() - banner));
    if (zoom && factor > 1)
        zoom->set(static_cast<int>(m_percentBefore * factor * kSlack));
}

void Mode::place(const QRect &where, Qt::WindowStates states)
{
    m_window.setWindowState(states & ~(Qt::WindowMaximized | Qt::WindowFullScreen));
    m_window.setGeometry(where);
    m_window.setWindowState(states);
}

void Mode::scrollPages(bool scroll)
{
    if (!scroll) {
        if (m_scroller)
            m_window.setCentralWidget(m_scroller->takeWidget()); // deletes the scroller
        return;
    }
    if (qobject_cast<QScrollArea *>(m_window.centralWidget()))
        return;
    m_scroller = new QScrollArea;
    m_scroller->setFrameShape(QFrame::NoFrame);
    m_scroller->setWidgetResizable(true);
    m_scroller->setAccessibleName(QStringLiteral("Pages"));
    m_scroller->setWidget(m_window.takeCentralWidget());
    m_window.setCentralWidget(m_scroller);
}

// What somebody else has hidden stays hidden.
void Mode::fold(const char *name)
{
    auto *widget = m_window.findChild<QWidget *>(QString::fromLatin1(name));
    if (!widget || widget->isHidden())
        return;
    widget->hide();
    m_folded.append(widget);
}

void Mode::foldAll()
{
    for (const char *name : foldedWidgets)
        fold(name);
    foldLog(true);
}

void Mode::unfoldAll()
{
    for (const QPointer<QWidget> &widget : qAsConst(m_folded)) {
        if (widget)
            widget->show();
    }
    m_folded.clear();
    foldLog(false);
}

// The log's place goes with it, to the fault's state beside.
void Mode::foldLog(bool folded)
{
    auto *group = m_window.findChild<QWidget *>(QStringLiteral("groupBox_FCCU"));
    auto *row = group ? qobject_cast<QBoxLayout *>(group->layout()) : nullptr;
    const int last = row ? row->count() - 1 : -1;
    if (last < 0)
        return;
    if (folded)
        m_logStretch = row->stretch(last);
    row->setStretch(last, folded ? 0 : m_logStretch);
}

bool Mode::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseMove || event->type() == QEvent::MouseButtonPress) {
        showPointer();
        m_pointer.start();
    }
    return QObject::eventFilter(watched, event);
}

void Mode::showPointer()
{
    if (std::exchange(m_pointerHidden, false))
        QApplication::restoreOverrideCursor();
}

void Mode::hidePointer()
{
    if (!std::exchange(m_pointerHidden, true))
        QApplication::setOverrideCursor(Qt::BlankCursor);
}

} // namespace presenter

void MainWindow::makePresenter()
{
    auto *mode = new presenter::Mode(*this);
    auto *speaker = new presenter::Speaker(*this, *mode);
    auto *key = new QShortcut(QKeySequence(QStringLiteral("Shift+F5")), this);
    key->setWhatsThis(QStringLiteral("Begin the speaker's script"));
    connect(key, &QShortcut::activated, speaker, [this, speaker] {
        const QString trouble = speaker->begin(dataFile(QStringLiteral("./Presentation/ten-minutes.toml")));
        if (!trouble.isEmpty())
            inform(this, QStringLiteral("Warning"), QStringLiteral("The script cannot be played.\n") + trouble,
                   QMessageBox::Ok);
    });
}
