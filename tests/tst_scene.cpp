#include "ClosedWindows.h"
#include "LoopbackServer.h"
#include "Manual.h"
#include "SceneDriver.h"
#include "api/KQHttpManager.h"
#include "app/PXMainWindows.h"
#include "app/StartUp.h"
#include "base/Deployment.h"
#include "crypto/Encryption.h"
#include "installer/Operating.h"
#include "settings/DataManager.h"

#include <QAccessible>
#include <QApplication>
#include <QFileDialog>

namespace {

constexpr int english = 0; // in the language list
constexpr int german = 4;

QString translated(const char *source) { return QCoreApplication::translate("main", source); }

struct Control {
    QString object;
    QString role;
    QString name; // in English
    bool isInTabOrder;
};

QVector<Control> controlsOfTheManual()
{
    QVector<Control> controls;
    for (const QStringList &cells : tableBelow("## The controls", "accessibility.md"))
        controls.append({codeIn(cells[1]).value(0), codeIn(cells[2]).value(0),
            codeIn(cells[3]).value(0), cells[0].toInt() > 0});
    return controls;
}

struct Page {
    QString object;
    QString property; // of the scene or the page, set for this look
    QVariant value;
};

} // namespace

// The scene with its real back ends, in a real window.
class TestScene : public QObject {
    Q_OBJECT

    QScopedPointer<PXMainWindows> window;
    QScopedPointer<SceneDriver> scene;
    QScopedPointer<QTemporaryDir> directory;
    QString target;
    DataManager &settings = *DataManager::getInstance();

    void open()
    {
        window.reset(new PXMainWindows);
        scene.reset(new SceneDriver(window.data()));
        window->requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(window.data()));
        QTRY_VERIFY(scene->item("tryItNowButton") && scene->item("pathField")
            && scene->item("progressBar") && scene->item("acceptCheckBox"));
    }

    // Clicks a control, or goes to it with Tab and presses Space.
    void use(const QString &name, bool byKeyboard)
    {
        if (!byKeyboard)
            return scene->click(name);
        scene->goToByTab(name);
        scene->key(Qt::Key_Space);
    }

    // Types the path, and unticks what would write outside of it.
    void prepareTarget(bool byKeyboard)
    {
        for (const char *name :
            {"customPathButton", "autoStartCheckBox", "shortcutCheckBox", "pathField"})
            use(name, byKeyboard);
        scene->type(target);
        QCOMPARE(window->rootObject()->property("installPath"), target);
        QVERIFY(!scene->get("autoStartCheckBox", "checked").toBool());
        QVERIFY(!scene->get("shortcutCheckBox", "checked").toBool());
    }

    void chooseLanguage(int row)
    {
        QMetaObject::invokeMethod(scene->item("languageBox"), "choose", Q_ARG(QVariant, row));
    }

    // Runs the event loop, clicks, and tells how the loop ended.
    int run(const QString &clicked)
    {
        QTimer::singleShot(0, this, [this, clicked] { scene->click(clicked); });
        return QApplication::exec();
    }

    // The bundle is the directory of this program, which holds nothing else.
    bool isInstalled() const
    {
        Operating::waitForCopies();
        const QStringList differences{"-r", "-x", "VornData.json", "-x", "manifest*",
            QCoreApplication::applicationDirPath(), target};
        return QProcess::execute("diff", differences) == 0;
    }

    void checkTexts()
    {
        const QList<QQuickItem *> texts = SceneDriver::shownTexts(window->rootObject());
        QVERIFY(texts.size() >= 5);
        for (const QQuickItem *text : texts) {
            const QByteArray shown = text->property("text").toString().toUtf8();
            const QRectF place = SceneDriver::placeOf(text);
            QVERIFY2(!text->property("truncated").toBool(), shown);
            QVERIFY2(text->property("paintedWidth").toReal() <= text->width() + 0.5, shown);
            QVERIFY2(text->property("implicitWidth").toReal() <= text->width() + 0.5
                    || text->property("wrapMode") != 0,
                shown);
            for (auto *above = text->parentItem(); above; above = above->parentItem())
                QVERIFY2(SceneDriver::placeOf(above).adjusted(-1, -1, 1, 1).contains(place), shown);
            for (const QQuickItem *other : texts)
                QVERIFY2(other == text || !SceneDriver::placeOf(other).intersects(place), shown);
        }
    }

private slots:
    void initTestCase()
    {
        useSoftwareSceneGraph();
        setUpFonts();
        registerQmlTypes();
        QAccessible::setActive(true);
        QVERIFY(QDir::setCurrent(QCoreApplication::applicationDirPath()));
        QVERIFY(QDir().mkpath("data/nested") && QDir().mkpath("bin"));
        QVERIFY(put("data/nested/a.bin", QByteArray(1000, 'x')));
        QVERIFY(putProgram("VORN", "echo started >\"$(dirname \"$0\")/marker\"\n"));
        QVERIFY(putProgram("bin/pkexec", "exec \"$@\"\n"));
        qputenv("PATH", QFile::encodeName(QDir().absoluteFilePath("bin:")) + qgetenv("PATH"));
    }

    void init()
    {
        directory.reset(new QTemporaryDir);
        target = directory->filePath("client");
        Deployment::current() = {};
        settings.changeLanguage(english);
    }

    void cleanup()
    {
        window.reset();
        Operating::waitForCopies();
    }

    void cleanupTestCase() { QVERIFY(freeClosedWindows()); }

    void fewObjectsComeFirstAndThePagesWhenSomeoneIsFasterThanTheirLoaders()
    {
        constexpr int enough = 200; // for the first page
        window.reset(new PXMainWindows);
        scene.reset(new SceneDriver(window.data()));
        QSet<QObject *> objects;
        for (QQuickItem *found : SceneDriver::itemsOf(window->rootObject())) {
            objects << found;
            for (QObject *child : found->findChildren<QObject *>())
                objects << child;
        }
        QVERIFY2(objects.size() <= enough, QByteArray::number(objects.size()));
        QVERIFY(!scene->item("pathField") && !scene->item("tryItNowButton"));
        QMetaObject::invokeMethod(window->rootObject(), "togglePathPanel");
        QVERIFY(scene->item("pathField") && scene->item("progressBar")
            && scene->item("tryItNowButton"));
        QCOMPARE(scene->get("pathField", "text"), "/opt/VornVPN");
    }

    void installs_data()
    {
        const Rows<bool> row; // by keyboard
        row("with the mouse", false);
        row("with the keyboard", true);
    }

    void installs()
    {
        const bool byKeyboard = Rows<bool>::fetch();
        LoopbackServer server;
        Deployment::current().mirrorAddresses = QStringList{server.baseAddress() + "/cookie.txt"};
        server.answer("/cookie.txt",
            {QByteArray::fromStdString(Encryption().encode(server.baseAddress().toStdString()))});
        for (const char *path : {"/api/system/region", "/api/system/index", "/api/system/log"})
            server.answer(path, {json("{'code':0,'data':{}}")});
        // An earlier installation: its settings are adopted, its language is not.
        QVERIFY(QDir().mkpath(target));
        QVERIFY(
            put(target + "/VornData.json", json("{'isMinToTray':false,'softUseLanguage':'_ru'}")));
        settings.setIsMinToTray(true);
        open();
        QCOMPARE(server.take("/api/system/region").method, "POST");
        QCOMPARE(server.take("/api/system/index").method, "POST");
        QTRY_VERIFY(scene->get("agreementButton", "enabled").toBool());

        use("languageBox", byKeyboard);
        QTRY_VERIFY(SceneDriver::shownTexts(scene->item("list")).size() > german);
        if (byKeyboard) {
            for (int row = english; row < german; ++row)
                scene->key(Qt::Key_Down);
            scene->key(Qt::Key_Return);
        } else {
            for (QQuickItem *text : SceneDriver::shownTexts(scene->item("list")))
                if (text->property("text") == "Deutsch")
                    scene->click(SceneDriver::placeOf(text).center());
        }
        QCOMPARE(settings.getSoftUseLanguage(), "_de");
        prepareTarget(byKeyboard);
        if (QTest::currentTestFailed()) // or the machine's own directories would be written
            return;
        QCOMPARE(scene->item("customPathArrow")->rotation(), 90.0);
        QSignalSpy finished(scene->item("finishPage"), &QQuickItem::visibleChanged);
        use("quickInstallButton", byKeyboard);
        QVERIFY(scene->isShown("installingPage"));
        QCOMPARE(settings.getInstallPath(), target);
        QVERIFY(!settings.getIsMinToTray());
        QCOMPARE(settings.getSoftUseLanguage(), "_de");
        QCOMPARE(server.take("/api/system/log").form, "POST flag=language type= language=_de");

        QVERIFY(finished.wait(60000));
        QVERIFY(isInstalled());
        for (const char *name : {"VORN", "Uninstall"}) {
            const QString script =
                target + (name == QString("VORN") ? "/VornRun.sh" : "/UninstallRun.sh");
            QVERIFY(contentOf(script).endsWith("  " + target.toUtf8() + '/' + name + '\n'));
        }
        QTRY_VERIFY(!window->rootObject()->property("copying").toBool());
        QVERIFY(!scene->isShown("failureNotice"));
        QCOMPARE(scene->focusedName() == "tryItNowButton", byKeyboard);
        QCOMPARE(run("tryItNowButton"), 0);
        QTRY_VERIFY(QFile::exists(target + "/marker"));
        QCOMPARE(server.take("/api/system/log").form, "POST flag=start");
        QCOMPARE(server.complaints, QStringList());
    }

    void chosenFolderLosesItsLeadingSlash()
    {
        open();
        const QString folder = directory->filePath("mit Ümlaut");
        QVERIFY(QDir().mkpath(folder));
        scene->click("customPathButton");
        scene->item("pathField")->forceActiveFocus();
        scene->type(directory->filePath("not there yet"));
        const QString typed = scene->get("pathField", "text").toString();
        scene->click("browseButton"); // before anybody has looked at the path
        QFileDialog *dialog = nullptr;
        for (QWidget *widget : QApplication::topLevelWidgets())
            dialog = dialog ? dialog : qobject_cast<QFileDialog *>(widget);
        QVERIFY(dialog);
        QCOMPARE(dialog->windowTitle(), "Select Directory");
        QTRY_COMPARE(dialog->directory().absolutePath(), directory->path());
        QMetaObject::invokeMethod(dialog, "reject");
        QCOMPARE(scene->get("pathField", "text"), typed);
        scene->click("browseButton");
        dialog->setDirectory(folder);
        dialog->selectFile(folder);
        QMetaObject::invokeMethod(dialog, "accept");
        const QString chosen = folder.mid(1) + "/VornVPN";
        QTRY_COMPARE(scene->get("pathField", "text"), chosen);
        QCOMPARE(window->rootObject()->property("installPath"), chosen);
    }

    void windowControlsReachTheWindow()
    {
        open();
        window->rootObject()->setSize({700, 100});
        QCOMPARE(window->rootObject()->size(), QSizeF(640, 520));
        const QPoint before = window->position();
        scene->press({300, 20});
        QTest::mouseMove(window.data(), QPoint(310, 15));
        QCOMPARE(window->position() - before, QPoint(10, -5));
        QTest::mouseRelease(window.data(), Qt::LeftButton, {}, QPoint(300, 20));
        scene->click("miniButton");
        QCOMPARE(window->windowState(), Qt::WindowMinimized);
    }

    void tabGoesThroughEveryControl()
    {
        open();
        scene->click("customPathButton");
        emit window->rootObject()->findChild<KQHttpManager *>()->initSystemStatus(0);
        scene->clickBesideEverything();
        for (const Control &control : controlsOfTheManual()) {
            if (control.isInTabOrder) {
                scene->key(Qt::Key_Tab);
                QCOMPARE(scene->focusedName(), control.object);
            }
        }
        scene->key(Qt::Key_Tab, Qt::ShiftModifier);
        QCOMPARE(scene->focusedName(), "miniButton");

        // What is hidden does not keep the focus, and is passed over.
        scene->item("pathField")->forceActiveFocus();
        QMetaObject::invokeMethod(window->rootObject(), "togglePathPanel");
        QCOMPARE(scene->focusedName(), "mainWindow");
        scene->goToByTab("customPathButton");
        scene->key(Qt::Key_Tab);
        QCOMPARE(scene->focusedName(), "miniButton");
    }

    void screenReadersKnowEveryControl()
    {
        open();
        for (const int language : {english, german}) {
            chooseLanguage(language);
            for (const Control &control : controlsOfTheManual()) {
                QQuickItem *spoken = scene->item(control.object);
                for (QQuickItem *child : SceneDriver::itemsOf(spoken))
                    spoken = child->inherits("QQuickTextInput") ? child : spoken;
                const auto *known = QAccessible::queryAccessibleInterface(spoken);
                QVERIFY(known);
                QCOMPARE(QVariant::fromValue(known->role()).toString(), control.role);
                QCOMPARE(known->text(QAccessible::Name), translated(qPrintable(control.name)));
                const bool isOff = control.object == "agreementButton";
                const QString description = known->text(QAccessible::Description);
                QCOMPARE(description == translated("Not available now"), isOff);
            }
        }
    }

    void everyTextFits()
    {
        open();
        scene->click("customPathButton");
        QQuickItem *progress = scene->item("installingPage")->childItems().constFirst();
        const std::vector<Page> pages{
            {"initialPage", "copyFailure", ""},
            {"finishPage", "copyFailure", ""},
            {"finishPage", "copyFailure", "/opt/VornVPN: 12 / 312"},
            {"finishPage", "startWanted", true},
            {"installingPage", "stage", 0},
            {"installingPage", "stage", 1},
            {"installingPage", "stage", 2},
        };
        window->rootObject()->setProperty("copying", true);
        for (int language = 0; language < settings.getLanguageList().size(); ++language) {
            chooseLanguage(language);
            for (const auto &[object, property, value] : pages) {
                for (const QString page : {"initialPage", "finishPage", "installingPage"})
                    scene->item(page)->setVisible(page == object);
                QObject *owner = property == "stage" ? progress : window->rootObject();
                owner->setProperty(qPrintable(property), value);
                QSignalSpy laidOut(window.data(), &QQuickWindow::frameSwapped);
                window->update();
                QVERIFY(laidOut.wait());
                checkTexts();
                window->rootObject()->setProperty("startWanted", false);
            }
        }
    }

    // Another language's letters come from another font, with another height.
    void textsOfTheBottomRowStandOnOneLine()
    {
        open();
        for (int language = 0; language < settings.getLanguageList().size(); ++language) {
            chooseLanguage(language);
            QVector<qreal> lines;
            for (const QString name : {"acceptCheckBox", "agreementButton", "customPathButton"}) {
                const QQuickItem *text = SceneDriver::shownTexts(scene->item(name)).constFirst();
                lines << text->mapToScene({0, text->property("baselineOffset").toReal()}).y();
            }
            QCOMPARE(lines, QVector<qreal>(3, lines.constFirst()));
        }
    }
};

QTEST_MAIN(TestScene)
#include "tst_scene.moc"
