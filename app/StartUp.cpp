#include "app/StartUp.h"

#include "api/KQHttpManager.h"
#include "app/WindowDrag.h"
#include "app/WindowShape.h"
#include "installer/Operating.h"
#include "settings/DataManager.h"

#include <QApplication>
#include <QFont>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QIcon>
#include <QImageReader>
#include <QQuickItem>
#include <QQuickView>
#include <QSGRendererInterface>
#include <QScreen>
#include <QtQml>

#include <future>

namespace {

std::future<void> &fontLoading()
{
    static std::future<void> loading;
    return loading;
}

} // namespace

void preferX11()
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "xcb;wayland");
    }
}

void scaleOnDenseScreens()
{
    const bool isScaledByUser = qgetenv("QT_SCALE_FACTOR").toDouble() > 1;
    QGuiApplication::setAttribute(Qt::AA_EnableHighDpiScaling, !isScaledByUser);
    QGuiApplication::setAttribute(Qt::AA_DisableHighDpiScaling, isScaledByUser);
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(
        Qt::HighDpiScaleFactorRoundingPolicy::RoundPreferFloor);
}

void useSoftwareSceneGraph() { QQuickWindow::setSceneGraphBackend(QSGRendererInterface::Software); }

QIcon windowIcon()
{
    constexpr int largest = 64; // pixels
    QIcon icon;
    QImageReader reader(QStringLiteral(":/image/small.ico"));
    for (int i = 0; i < reader.imageCount() && reader.jumpToImage(i); ++i) {
        if (reader.size().width() <= largest) {
            icon.addPixmap(QPixmap::fromImageReader(&reader));
        }
    }
    return icon;
}

void loadFontsAhead()
{
    fontLoading() = std::async([] {
        QFontDatabase::addApplicationFont(QStringLiteral(":/fonts/vorn-subset.ttf"));
        QFontDatabase::addApplicationFont(QStringLiteral(":/fonts/vorn-subset-arabic.ttf"));
    });
}

void setUpFonts()
{
    if (!fontLoading().valid()) {
        loadFontsAhead();
    }
    fontLoading().wait();
    fontLoading() =
        std::async([] { QFontDatabase().families(); }); // the others, for the first text
    QFont font;
    font.setFamily(QStringLiteral("Microsoft YaHei UI"));
    QApplication::setFont(font);
}

void registerQmlTypes()
{
    qmlRegisterType<KQHttpManager>("VORN.KQHttpManager", 1, 0, "KQHttpManager");
    qmlRegisterType<Operating>("VORN.Operating", 1, 0, "Operating");
    qmlRegisterSingletonType<DataManager>(
        "VORN.DataManager", 1, 0, "DataManager", virtualDataManager);
}

void fixSize(QWindow &window)
{
    const QSize size = window.size();
    window.setMinimumSize(size);
    window.setMaximumSize(size);
    window.create();
    window.resize(size); // the platform without screens takes the first size for physical pixels
}

void equipFramelessWindow(QQuickView &window)
{
    fixSize(window);
    new WindowShape(window);
    const char *const dragged = SIGNAL(send_drag(int, int));
    const char *const moved = SLOT(by(int, int));
    QObject::connect(window.rootObject(), dragged, new WindowDrag(window), moved);
}

void centreOnPrimaryScreen(QWindow &window)
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    if (!screen) {
        return;
    }
    const QRect desktop = screen->geometry();
    window.setX((desktop.width() - window.width()) / 2);
    window.setY((desktop.height() - window.height()) / 2);
}
