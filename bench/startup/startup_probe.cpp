// The installer as delivered, or an empty view in the same process, watched from inside.
//
//     startup-probe WHAT TASK
//
// WHAT is "installer", which runs the program's own main(), or one of two yardsticks: "empty", an
// application object and an empty QQuickView of the same size, and "text", the same view with one
// text. TASK is what happens at the first
// frame: "quit" ends the process there, for whoever times it; "count" prints the number of objects
// that the scene consists of; "stay" goes on, as "progress" does with the progress page.
#include "app/StartUp.h"
#include "base/Deployment.h"

#include <QApplication>
#include <QQmlComponent>
#include <QQmlContext>
#include <QQmlEngine>
#include <QQmlExpression>
#include <QQuickItem>
#include <QQuickView>
#include <QSet>
#include <QTextStream>

#include <unistd.h>

int installerMain(int argc, char *argv[]); // app/main.cpp, renamed by the build

namespace {

QByteArray task;

// What hangs below the root item, as child object or as visual child.
void collect(QObject *object, QSet<QObject *> &seen)
{
    if (object == nullptr || seen.contains(object)) {
        return;
    }
    seen.insert(object);
    for (QObject *child : object->children()) {
        collect(child, seen);
    }
    if (const auto *item = qobject_cast<QQuickItem *>(object)) {
        for (QQuickItem *child : item->childItems()) {
            collect(child, seen);
        }
    }
}

void say(const QString &line) { QTextStream(stdout) << line << '\n' << Qt::flush; }

// The page and its timer alone: nothing is installed.
void showProgressPage(QObject *scene)
{
    QQmlExpression expression(QQmlEngine::contextForObject(scene), scene,
        QStringLiteral("completePages(); progressTimer.start(); showPage(installingPage)"));
    expression.evaluate();
    if (expression.hasError()) {
        qFatal("%s", qPrintable(expression.error().toString()));
    }
}

void firstFrame(QQuickView *view)
{
    QSet<QObject *> objects;
    if (task == "quit") {
        _exit(0);
    } else if (task == "count") {
        collect(view->rootObject(), objects);
        say(QString::number(objects.size()));
        _exit(0);
    } else if (task == "progress") {
        showProgressPage(view->rootObject());
    }
    say(QStringLiteral("ready"));
}

// Connects to the first frame when the window is about to show itself.
class Watcher : public QObject {
public:
    using QObject::QObject;

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        auto *view = event->type() == QEvent::Show ? qobject_cast<QQuickView *>(watched) : nullptr;
        if (view != nullptr && !m_connected) {
            m_connected = true;
            connect(view, &QQuickWindow::frameSwapped, this, [this, view] {
                view->disconnect(this);
                firstFrame(view);
            });
        }
        return false;
    }

private:
    bool m_connected = false;
};

void watch()
{
    // A port that refuses: the requests of the scene set out and leave the machine alone.
    Deployment &deployment = Deployment::current();
    deployment.apiBaseAddress = QStringLiteral("http://127.0.0.1:9");
    deployment.ipLookupAddress = QStringLiteral("http://127.0.0.1:9/lookup");
    for (QString &address : deployment.mirrorAddresses) {
        address = QStringLiteral("https://127.0.0.1:9/cookie.txt");
    }
    qApp->installEventFilter(new Watcher(qApp));
}
Q_COREAPP_STARTUP_FUNCTION(watch)

// An empty address: an empty view.
int yardstickMain(int argc, char *argv[], const QByteArray &scene)
{
    useSoftwareSceneGraph();
    const QApplication application(argc, argv);
    QQuickView view;
    view.resize(640, 520);
    if (!scene.isEmpty()) {
        auto *const component = new QQmlComponent(view.engine(), &view);
        component->setData(scene, QUrl());
        view.setContent(QUrl(), component, component->create());
    }
    view.show();
    return QApplication::exec();
}

} // namespace

int main(int argc, char *argv[])
{
    const QByteArray what = argc == 3 ? argv[1] : "";
    task = argc == 3 ? argv[2] : "";
    argc = qMin(argc, 1);
    if (what == "installer") {
        return installerMain(argc, argv);
    }
    if (what == "empty") {
        return yardstickMain(argc, argv, {});
    }
    if (what == "text") {
        return yardstickMain(argc, argv, "import QtQuick 2.9\nText { text: 'Quick Install' }");
    }
    qFatal("usage: startup-probe installer|empty|text quit|count|stay|progress");
}
