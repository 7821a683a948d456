#include "ClosedWindows.h"
#include "Support.h"
#include "api/KQHttpManager.h"
#include "app/PXMainWindows.h"
#include "app/StartUp.h"
#include "base/Deployment.h"
#include "installer/Operating.h"
#include "settings/DataManager.h"

#include <QAccessible>
#include <QApplication>
#include <QDesktopServices>
#include <QFileDialog>
#include <QQuickItem>

namespace {

constexpr int german = 4; // in the language list

// The item and all below it, that one last.
QList<QQuickItem *> itemsOf(QQuickItem *top)
{
    QList<QQuickItem *> items;
    for (QQuickItem *child : top->childItems())
        items << itemsOf(child);
    return items << top;
}

QList<QQuickItem *> shownTexts(QQuickItem *top)
{
    QList<QQuickItem *> texts;
    for (QQuickItem *item : itemsOf(top))
        if (item->inherits("QQuickText") && item->isVisible() && item->property("text") != "")
            texts << item;
    return texts;
}

QRectF placeOf(const QQuickItem *item) { return item->mapRectToScene(item->boundingRect()); }

QString translated(const char *source) { return QCoreApplication::translate("main", source); }

} // namespace

class TestScene : public QObject {
    Q_OBJECT

    QScopedPointer<PXMainWindows> window;
    QScopedPointer<QTemporaryDir> directory;
    QString target;
    QStringList steps;
    QUrl openedUrl;

    QQuickItem *item(const QString &name) const
    {
        QQuickItem *found = nullptr;
        for (QQuickItem *candidate : itemsOf(window->rootObject()))
            found = candidate->objectName() == name ? candidate : found;
        return found;
    }

    QVariant get(const char *name, const char *property) { return item(name)->property(property); }

    QString focusedName() const
    {
        const QQuickItem *focused = window->activeFocusItem();
        while (focused && focused->objectName().isEmpty())
            focused = focused->parentItem();
        return focused ? focused->objectName() : QString();
    }

    void key(Qt::Key code, Qt::KeyboardModifiers m = {}) { QTest::keyClick(&*window, code, m); }
    void clickAt(QPointF at) { QTest::mouseClick(&*window, Qt::LeftButton, {}, at.toPoint()); }
    void click(const QString &name) { clickAt(placeOf(item(name)).center()); }

    // Clicks a control, or goes to it with Tab and presses Space.
    void use(const QString &name, bool byKeyboard)
    {
        if (!byKeyboard)
            return click(name);
        for (int i = 0; i < 12 && focusedName() != name; ++i)
            key(Qt::Key_Tab);
        QCOMPARE(focusedName(), name);
        key(Qt::Key_Space);
    }

    // Types the path, and unticks what would write outside of it.
    bool prepareTarget(bool byKeyboard)
    {
        for (const char *name :
            {"customPathButton", "autoStartCheckBox", "shortcutCheckBox", "pathField"})
            use(name, byKeyboard);
        key(Qt::Key_A, Qt::ControlModifier);
        for (const char letter : target.toLatin1())
            QTest::keyClick(window.data(), letter);
        return get("pathField", "text") == target && get("autoStartCheckBox", "checked") == false
            && get("shortcutCheckBox", "checked") == false;
    }

    void chooseLanguage(int row)
    {
        QMetaObject::invokeMethod(item("languageBox"), "choose", Q_ARG(QVariant, row));
    }

    // Runs the event loop, clicks, and tells how the loop ended.
    int run(const QString &clicked)
    {
        QTimer::singleShot(0, this, [this, clicked] { click(clicked); });
        return QApplication::exec();
    }

    // The bundle is the directory of this program, which holds nothing else.
    bool isInstalled() const
    {
        Operating::waitForCopies();
        return QProcess::execute("diff", {"-r", QCoreApplication::applicationDirPath(), target})
            == 0;
    }

public slots:
    void recordStep()
    {
        const QList<QQuickItem *> texts = shownTexts(item("installingPage"));
        steps << get("percentText", "text").toString()
                + (texts.isEmpty() ? QString() : ' ' + texts[0]->property("text").toString());
    }

    void recordUrl(const QUrl &url) { openedUrl = url; }

private slots:
    void initTestCase()
    {
        useSoftwareSceneGraph();
        setUpFonts();
        registerQmlTypes();
        QAccessible::setActive(true);
        Deployment::current() = {};
        QVERIFY(QDir::setCurrent(QCoreApplication::applicationDirPath()));
        QVERIFY(QDir().mkpath("data/nested") && QDir().mkpath("bin"));
        // Enough for the copy to outlast the click that closes the window.
        for (int i = 0; i < 300; ++i)
            QVERIFY(put(QString("data/nested/%1.bin").arg(i), QByteArray(1000 + i, 'x')));
        QVERIFY(putProgram("VORN", "echo started >\"$(dirname \"$0\")/marker\"\n"));
        QVERIFY(putProgram("bin/pkexec", "exec \"$@\"\n"));
        qputenv("PATH", QFile::encodeName(QDir().absoluteFilePath("bin:")) + qgetenv("PATH"));
    }

    void init()
    {
        directory.reset(new QTemporaryDir);
        target = directory->filePath("client");
        DataManager::getInstance()->changeLanguage(0);
        window.reset(new PXMainWindows);
        window->requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(window.data()));
        QTRY_VERIFY(item("tryItNowButton") && item("pathField") && item("progressBar")
            && item("acceptCheckBox"));
        chooseLanguage(0);
    }

    void cleanup()
    {
        window.reset();
        Operating::waitForCopies();
    }

    void cleanupTestCase() { QVERIFY(freeClosedWindows()); }

    void fewObjectsComeFirstAndThePagesWhenSomeoneIsFasterThanTheirLoaders()
    {
        window.reset();
        window.reset(new PXMainWindows);
        QSet<QObject *> objects;
        for (QQuickItem *found : itemsOf(window->rootObject())) {
            objects << found;
            for (QObject *child : found->findChildren<QObject *>())
                objects << child;
        }
        QVERIFY2(objects.size() <= 200, QByteArray::number(objects.size()));
        QVERIFY(!item("pathField") && !item("tryItNowButton"));
        QMetaObject::invokeMethod(window->rootObject(), "togglePathPanel");
        QVERIFY(item("pathField") && item("progressBar") && item("tryItNowButton"));
        QCOMPARE(get("pathField", "text"), "/opt/VornVPN");
    }

    void serverSetsLanguageAndEnablesTheAgreement()
    {
        auto *server = window->rootObject()->findChild<KQHttpManager *>();
        emit server->sendDefaultLanguage(3);
        QCOMPARE(DataManager::getInstance()->getSoftUseLanguage(), "_ru");
        QCOMPARE(get("languageBox", "textForShow"), "Русский");
        QCOMPARE(get("languageBox", "nowIndex"), 3);
        DataManager::getInstance()->setDomainName("agreement://host");
        DataManager::getInstance()->setPrivacyPolicyUrl("/terms");
        QDesktopServices::setUrlHandler("agreement", this, "recordUrl");
        click("agreementButton");
        QCOMPARE(openedUrl, QUrl());
        emit server->initSystemStatus(1000);
        click("agreementButton");
        QCOMPARE(openedUrl, QUrl("agreement://host/terms"));
        QDesktopServices::unsetUrlHandler("agreement");
    }

    void installs_data()
    {
        const Table<bool> row; // by keyboard
        row("with the mouse", false);
        row("with the keyboard", true);
    }

    void installs()
    {
        const auto [byKeyboard] = Table<bool>::fetch();
        use("languageBox", byKeyboard);
        QSignalSpy drawn(window.data(), &QQuickWindow::frameSwapped);
        QVERIFY(drawn.wait());
        if (byKeyboard) {
            key(Qt::Key_End);
            key(Qt::Key_Return);
        } else {
            clickAt(placeOf(item("list")).topLeft() + QPointF(30, 25 * german + 12));
        }
        QCOMPARE(DataManager::getInstance()->getSoftUseLanguage(), "_de");
        QVERIFY(prepareTarget(byKeyboard));
        QCOMPARE(item("customPathArrow")->rotation(), 90.0);

        use("acceptCheckBox", byKeyboard);
        use("quickInstallButton", byKeyboard);
        QVERIFY(item("initialPage")->isVisible());
        use("acceptCheckBox", byKeyboard);
        steps.clear();
        connect(item("progressBar"), SIGNAL(valueChanged()), this, SLOT(recordStep()));
        QSignalSpy finished(item("finishPage"), &QQuickItem::visibleChanged);
        use("quickInstallButton", byKeyboard);
        QVERIFY(item("installingPage")->isVisible());
        QVERIFY(!item("initialPage")->isVisible() && !item("pathPanel")->isVisible());
        QCOMPARE(DataManager::getInstance()->getInstallPath(), target);
        QVERIFY(!DataManager::getInstance()->getIsBootUp());
        QVERIFY(finished.wait(30000));
        QVERIFY(!item("installingPage")->isVisible());

        const char *const headlines[] = {"One-click acceleration", "Smart cloud acceleration",
            "Multi-platform, fully compatible"};
        QStringList expected;
        for (int i = 0; i < 100; ++i)
            expected << QString("%1% ").arg(i) + translated(headlines[std::min(i / 35, 2)]);
        steps.removeDuplicates();
        QCOMPARE(steps, expected << "100%");
        QVERIFY(isInstalled());
        QVERIFY(contentOf(target + "/VornRun.sh").endsWith("  " + target.toUtf8() + "/VORN\n"));
        QCOMPARE(focusedName() == "tryItNowButton", byKeyboard);
        QCOMPARE(run("tryItNowButton"), 0);
        QTRY_VERIFY(QFile::exists(target + "/marker"));
    }

    void closingDuringTheCopyCompletesIt()
    {
        QVERIFY(prepareTarget(false));
        click("quickInstallButton");
        QCOMPARE(run("closeButton"), 0);
        window.reset();
        QVERIFY(isInstalled());
    }

    void chosenFolderLosesItsLeadingSlash()
    {
        const QString folder = directory->filePath("mit Ümlaut");
        QVERIFY(QDir().mkpath(folder));
        click("customPathButton");
        click("browseButton");
        QFileDialog *dialog = nullptr;
        for (QWidget *widget : QApplication::topLevelWidgets())
            dialog = dialog ? dialog : qobject_cast<QFileDialog *>(widget);
        QVERIFY(dialog);
        QCOMPARE(dialog->windowTitle(), "Select Directory");
        QMetaObject::invokeMethod(dialog, "reject");
        QCOMPARE(get("pathField", "text"), "/opt/VornVPN");
        click("browseButton");
        dialog->setDirectory(folder);
        dialog->selectFile(folder);
        QMetaObject::invokeMethod(dialog, "accept");
        QTRY_COMPARE(get("pathField", "text"), QVariant(folder.mid(1) + "/VornVPN"));
    }

    void windowControlsReachTheWindow()
    {
        window->rootObject()->setSize({700, 100});
        QCOMPARE(window->rootObject()->size(), QSizeF(640, 520));
        const QPoint before = window->position();
        QTest::mousePress(window.data(), Qt::LeftButton, {}, QPoint(300, 20));
        QTest::mouseMove(window.data(), QPoint(310, 15));
        QCOMPARE(window->position() - before, QPoint(10, -5));
        QTest::mouseRelease(window.data(), Qt::LeftButton, {}, QPoint(300, 20));
        click("miniButton");
        QCOMPARE(window->windowState(), Qt::WindowMinimized);
    }

    void tabGoesThroughEveryControl()
    {
        click("customPathButton");
        emit window->rootObject()->findChild<KQHttpManager *>()->initSystemStatus(0);
        clickAt({320, 110}); // beside every control: takes the focus from all of them
        for (const QString name : {"languageBox", "quickInstallButton", "acceptCheckBox",
                 "agreementButton", "customPathButton", "pathField", "browseButton",
                 "autoStartCheckBox", "shortcutCheckBox", "miniButton", "closeButton"}) {
            key(Qt::Key_Tab);
            QCOMPARE(focusedName(), name);
        }
        key(Qt::Key_Tab, Qt::ShiftModifier);
        QCOMPARE(focusedName(), "miniButton");

        // What is hidden is passed over, and does not keep the focus.
        item("pathField")->forceActiveFocus();
        QMetaObject::invokeMethod(window->rootObject(), "togglePathPanel");
        QCOMPARE(focusedName(), "mainWindow");
        use("customPathButton", true);
        key(Qt::Key_Return);
        key(Qt::Key_Tab);
        QCOMPARE(focusedName(), "miniButton");
    }

    void screenReadersKnowEveryControl()
    {
        // clang-format off
        const std::tuple<const char *, QAccessible::Role, const char *> rows[] = {
            {"languageBox", QAccessible::ComboBox, "Interface language"}, {"quickInstallButton", QAccessible::Button, "Quick Install"},
            {"acceptCheckBox", QAccessible::CheckBox, "Accept"}, {"agreementButton", QAccessible::Button, "Vorn license agreement"},
            {"customPathButton", QAccessible::Button, "Custom path >"}, {"browseButton", QAccessible::Button, "Browse"},
            {"pathField", QAccessible::EditableText, "Installation directory"}, {"progressBar", QAccessible::ProgressBar, "Installation progress"},
            {"autoStartCheckBox", QAccessible::CheckBox, "Start Up Automatically"}, {"shortcutCheckBox", QAccessible::CheckBox, "Create Shortcut"},
            {"tryItNowButton", QAccessible::Button, "Try It Now"}, {"miniButton", QAccessible::Button, "Minimize"},
            {"closeButton", QAccessible::Button, "Close"}};
        // clang-format on
        for (const int language : {0, german}) {
            chooseLanguage(language);
            for (const auto &[object, role, name] : rows) {
                QQuickItem *spoken = item(object);
                for (QQuickItem *child : itemsOf(item(object)))
                    spoken = child->inherits("QQuickTextInput") ? child : spoken;
                const QAccessibleInterface *known = QAccessible::queryAccessibleInterface(spoken);
                QVERIFY2(known && known->role() == role, object);
                QCOMPARE(known->text(QAccessible::Name), translated(name));
            }
        }
    }

    void everyTextFits()
    {
        click("customPathButton");
        QQuickItem *progress = item("installingPage")->childItems().constFirst();
        const QStringList pages{"initialPage", "finishPage", "installingPage"};
        for (int i = 0; i < 25; ++i) { // the last page has three stages
            chooseLanguage(i / 5);
            for (const QString &page : pages)
                item(page)->setVisible(page == pages[std::min(i % 5, 2)]);
            progress->setProperty("stage", i % 3);
            QSignalSpy laidOut(window.data(), &QQuickWindow::frameSwapped);
            window->update();
            QVERIFY(laidOut.wait());
            const QList<QQuickItem *> texts = shownTexts(window->rootObject());
            QVERIFY(texts.size() >= 5);
            for (const QQuickItem *text : texts) {
                const QByteArray shown = text->property("text").toString().toUtf8();
                const QRectF place = placeOf(text);
                QVERIFY2(!text->property("truncated").toBool(), shown);
                QVERIFY2(text->property("paintedWidth").toReal() <= text->width() + 0.5, shown);
                for (auto *above = text->parentItem(); above; above = above->parentItem())
                    QVERIFY2(placeOf(above).adjusted(-1, -1, 1, 1).contains(place), shown);
                for (const QQuickItem *other : texts)
                    QVERIFY2(other == text || !placeOf(other).intersects(place), shown);
            }
        }
    }
};

QTEST_MAIN(TestScene)
#include "tst_scene.moc"
