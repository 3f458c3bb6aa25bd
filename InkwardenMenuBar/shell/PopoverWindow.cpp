#include "PopoverWindow.h"

#include "platform/PopoverPlacement.h"
#include "platform/ResidentCode.h"
#include "store/RoyaltiesStore.h"

#include <QCursor>
#include <QGuiApplication>
#include <QMouseEvent>
#include <QQmlEngine>
#include <QQmlExtensionPlugin>
#include <QQuickItem>
#include <QQuickView>
#include <QSGRendererInterface>
#include <QScreen>
#include <QTimer>

// The views are a static QML module, linked in beside this window.
Q_IMPORT_QML_PLUGIN(Inkwarden_UiPlugin)

namespace {

bool onX11()
{
    return QGuiApplication::platformName() == u"xcb";
}

bool onWayland()
{
    return QGuiApplication::platformName().startsWith(u"wayland");
}

// How often and for how long the shown popover takes the pointer and the focus again.
constexpr int holdAgainMilliseconds = 100;
constexpr int holdTimes = 15;

// From giving up the window to handing its memory back, and from the first frame of a new window to
// handing back what only loading the views needed.
constexpr std::chrono::milliseconds memoryReleaseDelay{1000};

} // namespace

PopoverWindow::PopoverWindow(RoyaltiesStore &store, QObject *parent, std::chrono::milliseconds releaseDelay)
    : Popover(parent)
    , m_store(store)
{
    m_release.setSingleShot(true);
    m_release.setInterval(releaseDelay);
    QObject::connect(&m_release, &QTimer::timeout, this, &PopoverWindow::releaseView);
    // A popover that was never shown has not "just" closed.
    m_sinceClosed.invalidate();
    if (onWayland()) {
        QObject::connect(qGuiApp, &QGuiApplication::applicationStateChanged, this, [this](Qt::ApplicationState state) {
            if (state != Qt::ApplicationActive && isShown()) {
                close();
            }
        });
    }
}

PopoverWindow::~PopoverWindow()
{
    // A window that goes says it is hidden: that must not start the release timer as it goes.
    if (m_view) {
        QObject::disconnect(m_view.get(), nullptr, this, nullptr);
    }
}

void PopoverWindow::createView()
{
    // Text and flat shapes in a small window need no GPU: the software renderer draws them as fast
    // and leaves out Mesa and its shader compiler, which would take several times Inkwarden's own
    // memory. QT_QUICK_BACKEND=rhi brings back Qt's default.
    static const bool rendererChosen = [] {
        if (!qEnvironmentVariableIsSet("QT_QUICK_BACKEND") && !qEnvironmentVariableIsSet("QMLSCENE_DEVICE")) {
            QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
        }
        return true;
    }();
    Q_UNUSED(rendererChosen)
    m_view = std::make_unique<QQuickView>();
    // On X11 the popover sets the keyboard focus itself, as a menu does: a window manager ignores
    // requests to activate a window it does not manage (GNOME Shell does).
    m_view->setFlags(Qt::FramelessWindowHint | (onX11() ? Qt::Popup | Qt::X11BypassWindowManagerHint : Qt::Tool));
    //: The popover's window, as screen readers announce it as it opens.
    m_view->setTitle(tr("Inkwarden Royalties"));
    m_view->setResizeMode(QQuickView::SizeRootObjectToView);
    m_view->setMinimumSize(QSize(width, height));
    m_view->setMaximumSize(QSize(width, height));
    m_view->resize(width, height);
    m_view->engine()->addImportPath(QStringLiteral("qrc:/qt/qml"));
    QObject::connect(m_view->engine(), &QQmlEngine::quit, this, &Popover::quitRequested);
    QObject::connect(m_view.get(), &QWindow::visibleChanged, this, [this](bool visible) {
        if (!visible) {
            m_sinceClosed.start();
            m_release.start();
            m_holdsPointer = false;
            m_holdTimesLeft = 0;
            m_pressedInside = false;
        }
    });
    if (onX11()) {
        m_view->installEventFilter(this);
    }
    // Loading the views runs much code only once (the QML engine's loader and compiler, the
    // plugins' type registrations); once the popover is drawn, its pages go back.
    QObject::connect(
        m_view.get(), &QQuickWindow::frameSwapped, this,
        [this] { QTimer::singleShot(memoryReleaseDelay, this, [] { ResidentCode::releaseAfterWork(); }); },
        Qt::SingleShotConnection);
    m_view->setInitialProperties({{QStringLiteral("store"), QVariant::fromValue(&m_store)}});
    m_view->setSource(QUrl(QStringLiteral("qrc:/qt/qml/Inkwarden/Ui/MenuContentView.qml")));
    if (QQuickItem *root = m_view->rootObject()) {
        QObject::connect(root, SIGNAL(closeRequested()), this, SLOT(close()));
    }
}

bool PopoverWindow::isShown() const
{
    return m_view && m_view->isVisible();
}

void PopoverWindow::show(std::optional<QPoint> anchor)
{
    m_release.stop();
    if (!m_view) {
        createView();
    }
    if (!onWayland()) {
        placeNear(anchor);
    }
    m_view->show();
    m_view->raise();
    m_view->requestActivate();
}

void PopoverWindow::close()
{
    if (m_view) {
        m_view->hide();
    }
}

void PopoverWindow::releaseView()
{
    if (!m_view || m_view->isVisible()) {
        return;
    }
    QObject::disconnect(m_view.get(), nullptr, this, nullptr);
    m_view.reset();
    Q_EMIT viewReleased();
    // The engine leaves some of its objects to be deleted by the event loop; once they are gone,
    // their memory and the code Qt Quick ran go back to the system.
    QTimer::singleShot(memoryReleaseDelay, this, [this] {
        if (!m_view) {
            ResidentCode::releaseAfterWork();
        }
    });
}

bool PopoverWindow::closedJustNow() const
{
    return m_sinceClosed.isValid() && m_sinceClosed.elapsed() < reopenGuardMilliseconds;
}

bool PopoverWindow::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != m_view.get()) {
        return Popover::eventFilter(watched, event);
    }
    switch (event->type()) {
    case QEvent::Expose:
        // The pointer can be held only once the window is on the screen.
        if (!m_holdsPointer && m_view->isExposed()) {
            m_holdsPointer = true;
            m_holdTimesLeft = holdTimes;
            holdPointer();
        }
        break;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease: {
        const bool inside =
            QRect(QPoint(0, 0), m_view->size()).contains(static_cast<QMouseEvent *>(event)->position().toPoint());
        const bool press = event->type() == QEvent::MouseButtonPress;
        // A press elsewhere closes the popover. Qt sometimes drops that press once the pointer is
        // held, so a release elsewhere closes it too, unless it ends a drag that began inside.
        if (!inside && (press || !m_pressedInside)) {
            close();
            return true;
        }
        m_pressedInside = press && inside;
        break;
    }
    default:
        break;
    }
    return Popover::eventFilter(watched, event);
}

void PopoverWindow::holdPointer()
{
    if (!isShown() || m_holdTimesLeft <= 0) {
        return;
    }
    --m_holdTimesLeft;
    // The host's menu may still hold the pointer as the popover shows (GNOME Shell's does when
    // the popover opens from its "Open Inkwarden"), and hands the focus back to where it was as it
    // closes. Qt reports the grab as taken even then, so the pointer and the focus are taken again
    // for a moment; taking them again while holding them changes nothing.
    m_view->setMouseGrabEnabled(true);
    if (!m_view->isActive()) {
        m_view->requestActivate();
    }
    QTimer::singleShot(holdAgainMilliseconds, this, &PopoverWindow::holdPointer);
}

void PopoverWindow::placeNear(std::optional<QPoint> anchor)
{
    const QPoint point = anchor.value_or(QCursor::pos());
    QScreen *screen = QGuiApplication::screenAt(point);
    if (!screen) {
        screen = QGuiApplication::primaryScreen();
    }
    if (!screen) {
        return;
    }
    m_view->setScreen(screen);
    m_view->setPosition(
        PopoverPlacement::topLeft(screen->geometry(), screen->availableGeometry(), point, QSize(width, height)));
}
