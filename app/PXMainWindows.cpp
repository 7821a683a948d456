#include "app/PXMainWindows.h"

#include "app/MyNetworkAccessManagerFactory.h"
#include "app/StartUp.h"
#include "app/WindowDrag.h"
#include "app/WindowShape.h"
#include "base/DebugLine.h"
#include "base/FirstFrame.h"
#include "settings/DataManager.h"

#include <QCoreApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQmlProperty>
#include <QQuickItem>

namespace {

struct SceneConnection {
    const char *signal;
    const char *slot;
};

// A scene may lack one of these signals, as the installer's lacks showWindows(): Qt warns and the
// others are connected.
const SceneConnection sceneConnections[] = {
    {SIGNAL(send_drag(int, int)), SLOT(slot_drag(int, int))},
    {SIGNAL(closeWindows()), SLOT(onCloseWindows())},
    {SIGNAL(miniWindows()), SLOT(onMiniWindows())},
    {SIGNAL(hideWindows()), SLOT(onHideWindows())},
    {SIGNAL(showWindows()), SLOT(onShowWindows())},
};

// Engines may ask the factory for a manager as long as they live, so it stays to the end.
MyNetworkAccessManagerFactory *networkFactory()
{
    static auto *const factory = new MyNetworkAccessManagerFactory;
    return factory;
}

Qt::WindowFlags windowFlags(const QString &systemType)
{
    if (systemType == QLatin1String("linux")) {
        return Qt::FramelessWindowHint;
    }
    return Qt::Window | Qt::FramelessWindowHint | Qt::WindowSystemMenuHint
        | Qt::WindowMinimizeButtonHint | Qt::WindowMaximizeButtonHint;
}

} // namespace

PXMainWindows::PXMainWindows(QWindow *parent)
    : QQuickView(parent)
{
    const QString systemType = DataManager::getInstance()->getSystemType();
    debugLine() << "sys:" << systemType;
    setTitle(QStringLiteral("VornVPN")); // for task bars and screen readers
    setFlags(windowFlags(systemType));
    setColor(Qt::transparent);
    connect(this, &QQuickWindow::frameSwapped, this, FirstFrame::drawn);
    FirstFrame::expect();
    loadScene(QUrl(QStringLiteral("qrc:/main.qml")));
    m_root = rootObject();
    engine()->setNetworkAccessManagerFactory(networkFactory());

    for (const SceneConnection &connection : sceneConnections) {
        connect(m_root, connection.signal, this, connection.slot);
    }
    connect(m_root, sceneConnections[0].signal, this, SLOT(dragByCompositor()));
    connect(this, SIGNAL(widthChanged(int)), this, SLOT(onWidthChanged(int)));
    connect(engine(), SIGNAL(quit()), QCoreApplication::instance(), SLOT(quit()));
    fixSize(*this);
    m_shape = new WindowShape(*this);
    QQmlProperty(m_root, QStringLiteral("panelOpen"))
        .connectNotifySignal(this, SLOT(showDrawnPart()));
    showDrawnPart();
    if (m_root) {
        FirstFrame::then(m_root, [this] { tellFirstFrame(); });
    }
    show();
}

PXMainWindows::~PXMainWindows()
{
    if (!m_root) {
        return;
    }
    for (const SceneConnection &connection : sceneConnections) {
        disconnect(m_root, connection.signal, this, connection.slot);
    }
    delete m_root;
    m_root = nullptr;
}

// As setSource() does it, but the fonts may take as long as the scene's types do.
void PXMainWindows::loadScene(const QUrl &scene)
{
    auto *const component = new QQmlComponent(engine(), scene, this);
    setUpFonts();
    setContent(scene, component, component->create());
}

void PXMainWindows::slot_drag(int x, int y)
{
    setX(this->x() + x);
    setY(this->y() + y);
}

void PXMainWindows::onCloseWindows()
{
    close();
    QCoreApplication::quit();
    QCoreApplication::exit(0);
}

void PXMainWindows::onMiniWindows() { showMinimized(); }

void PXMainWindows::onHideWindows() { hide(); }

void PXMainWindows::onShowWindows()
{
    requestActivate();
    show();
}

void PXMainWindows::onWidthChanged(int w)
{
    debugLine() << "width--------------------------------->" << w;
    QMetaObject::invokeMethod(m_root, "onPXWidthChanged", Q_ARG(QVariant, w));
}

void PXMainWindows::dragByCompositor() { WindowDrag::leaveToCompositor(*this); }

// A scene can leave to then what its first frame does not show.
void PXMainWindows::tellFirstFrame()
{
    const char *const property = "firstFrameDrawn";
    if (m_root->metaObject()->indexOfProperty(property) >= 0) {
        m_root->setProperty(property, true);
    }
}

// The panel lies in the lowest part of the window. A scene without one draws everywhere.
void PXMainWindows::showDrawnPart()
{
    constexpr int panelHeight = 100; // pixels
    const QVariant panelOpen = m_root ? m_root->property("panelOpen") : QVariant(true);
    const bool isHidden = panelOpen.isValid() && !panelOpen.toBool();
    m_shape->setDrawnHeight(height() - (isHidden ? panelHeight : 0));
}
