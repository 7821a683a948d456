#include <QAccessible>
#include <QApplication>
#include <QDesktopServices>
#include <QDirIterator>
#include <QFileDialog>
#include <QQuickItem>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include "api/KQHttpManager.h"
#include "app/PXMainWindows.h"
#include "app/StartUp.h"
#include "base/Deployment.h"
#include "installer/Operating.h"
#include "settings/DataManager.h"

namespace {

constexpr const char *languageCodes[] = {"_en", "_zh_hk", "_id", "_ru", "_de"};
constexpr int german = 4;

bool write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size()
        && file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

QStringList treeOf(const QString &directory)
{
    QStringList entries;
    QDirIterator files(directory, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next();
        entries << QDir(directory).relativeFilePath(path) + ' '
                + QString::number(files.fileInfo().size());
    }
    entries.sort();
    return entries;
}

QQuickItem *findItem(QQuickItem *below, const QString &name)
{
    if (below->objectName() == name)
        return below;
    const QList<QQuickItem *> children = below->childItems();
    for (QQuickItem *child : children) {
        if (QQuickItem *found = findItem(child, name))
            return found;
    }
    return nullptr;
}

QList<QQuickItem *> shownTexts(QQuickItem *below)
{
    QList<QQuickItem *> texts;
    if (!below->isVisible())
        return texts;
    if (below->inherits("QQuickText") && !below->property("text").toString().isEmpty())
        texts << below;
    const QList<QQuickItem *> children = below->childItems();
    for (QQuickItem *child : children)
        texts << shownTexts(child);
    return texts;
}

QRectF placeOf(const QQuickItem *item) { return item->mapRectToScene(item->boundingRect()); }

QString translated(const char *source) { return QCoreApplication::translate("main", source); }

// In bundle/data, so that a copy lasts longer than the click that closes the window.
constexpr int payloadFiles = 300;

} // namespace

class TestScene : public QObject {
    Q_OBJECT

public slots:
    void recordStep();
    void recordUrl(const QUrl &url) { openedUrl = url; }

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void firstFrameNeedsFewObjects();
    void pagesExistWhenSomeoneIsFasterThanTheLoaders();
    void serverSetsLanguageAndEnablesTheAgreement();
    void installs_data();
    void installs();
    void closingDuringTheCopyCompletesIt();
    void chosenFolderLosesItsLeadingSlash();
    void windowControlsReachTheWindow();
    void tabGoesThroughEveryControl();
    void screenReadersKnowEveryControl();
    void everyTextFits_data();
    void everyTextFits();

private:
    QQuickItem *item(const QString &name) const { return findItem(window->rootObject(), name); }
    QPoint middleOf(const QString &name) const { return placeOf(item(name)).center().toPoint(); }
    void click(const QString &name)
    {
        QTest::mouseClick(window.data(), Qt::LeftButton, {}, middleOf(name));
    }
    void clickRow(int row)
    {
        const QRectF box = placeOf(item("languageBox"));
        const QPointF first = box.bottomLeft() + QPointF(30, 6 + 12);
        QTest::mouseClick(
            window.data(), Qt::LeftButton, {}, (first + QPointF(0, 25 * row)).toPoint());
    }
    QString focusedName() const;
    void use(const QString &name, bool byKeyboard);
    void call(const char *function) { QMetaObject::invokeMethod(window->rootObject(), function); }
    void preparePath();
    int run(const QString &clicked);

    QScopedPointer<PXMainWindows> window;
    QScopedPointer<QTemporaryDir> directory;
    QString target;
    QStringList steps;
    QUrl openedUrl;
};

void TestScene::initTestCase()
{
    useSoftwareSceneGraph();
    setUpFonts();
    registerQmlTypes();
    QAccessible::setActive(true);
    Deployment &deployment = Deployment::current();
    deployment.apiBaseAddress.clear();
    deployment.mirrorAddresses.clear();
    deployment.ipLookupAddress.clear();

    // The bundle is the directory of this program, which holds nothing else.
    const QString bundle = QCoreApplication::applicationDirPath();
    QVERIFY(QDir::setCurrent(bundle));
    QVERIFY(QDir(bundle).mkpath("data/nested"));
    for (int i = 0; i < payloadFiles; ++i)
        QVERIFY(write(QString("data/nested/%1.bin").arg(i), QByteArray(1000 + i, 'x')));
    QVERIFY(write("VORN", "#!/bin/sh\necho started >\"$(dirname \"$0\")/marker\"\n"));
    QVERIFY(QDir(bundle).mkpath("bin"));
    QVERIFY(write("bin/pkexec", "#!/bin/sh\nexec \"$@\"\n"));
    qputenv("PATH", bundle.toLocal8Bit() + "/bin:" + qgetenv("PATH"));
}

void TestScene::init()
{
    directory.reset(new QTemporaryDir);
    target = directory->filePath("client");
    DataManager::getInstance()->changeLanguage(0);
    window.reset(new PXMainWindows);
    if (QTest::currentTestFunction() == QByteArray("firstFrameNeedsFewObjects"))
        return;
    window->requestActivate();
    QVERIFY(QTest::qWaitForWindowActive(window.data()));
    QTRY_VERIFY(item("tryItNowButton") && item("pathField") && item("progressBar")
        && item("acceptCheckBox"));
    QMetaObject::invokeMethod(item("languageBox"), "choose", Q_ARG(QVariant, 0));
}

void TestScene::cleanup()
{
    window.reset();
    Operating::waitForCopies();
}

QString TestScene::focusedName() const
{
    const QQuickItem *focused = window->activeFocusItem();
    while (focused && focused->objectName().isEmpty())
        focused = focused->parentItem();
    return focused ? focused->objectName() : QString();
}

// Clicks a control, or goes to it with Tab and presses Space.
void TestScene::use(const QString &name, bool byKeyboard)
{
    if (!byKeyboard) {
        click(name);
        return;
    }
    for (int i = 0; i < 12 && focusedName() != name; ++i)
        QTest::keyClick(window.data(), Qt::Key_Tab);
    QCOMPARE(focusedName(), name);
    QTest::keyClick(window.data(), Qt::Key_Space);
}

void TestScene::preparePath()
{
    click("customPathButton");
    item("pathField")->setProperty("text", target);
    click("autoStartCheckBox");
    click("shortcutCheckBox");
    QCOMPARE(item("autoStartCheckBox")->property("checked").toBool(), false);
    QCOMPARE(item("shortcutCheckBox")->property("checked").toBool(), false);
}

// Runs the event loop, clicks, and tells how the loop ended.
int TestScene::run(const QString &clicked)
{
    QTimer::singleShot(0, this, [this, clicked] { click(clicked); });
    return QApplication::exec();
}

void TestScene::recordStep()
{
    const QList<QQuickItem *> texts = shownTexts(item("installingPage"));
    steps << item("percentText")->property("text").toString() + ' '
            + (texts.isEmpty() ? QString() : texts.first()->property("text").toString());
}

void TestScene::firstFrameNeedsFewObjects()
{
    QSet<QObject *> objects{window->rootObject()};
    QList<QObject *> pending = objects.values();
    while (!pending.isEmpty()) {
        const QObject *object = pending.takeLast();
        QList<QObject *> below = object->children();
        if (const auto *parent = qobject_cast<const QQuickItem *>(object)) {
            for (QQuickItem *child : parent->childItems())
                below << child;
        }
        for (QObject *child : qAsConst(below)) {
            if (!objects.contains(child))
                pending << child;
            objects << child;
        }
    }
    QVERIFY2(objects.size() <= 200, qPrintable(QString::number(objects.size())));
    QVERIFY(!item("tryItNowButton"));
}

void TestScene::pagesExistWhenSomeoneIsFasterThanTheLoaders()
{
    window.reset();
    window.reset(new PXMainWindows);
    QVERIFY(!item("pathField"));
    call("togglePathPanel");
    QVERIFY(item("pathField") && item("progressBar") && item("tryItNowButton"));
    QCOMPARE(item("pathField")->property("text").toString(), QString("/opt/VornVPN"));
}

void TestScene::serverSetsLanguageAndEnablesTheAgreement()
{
    auto *server = window->rootObject()->findChild<KQHttpManager *>();
    emit server->sendDefaultLanguage(3);
    QCOMPARE(DataManager::getInstance()->getSoftUseLanguage(), QString("_ru"));
    QCOMPARE(item("languageBox")->property("textForShow").toString(), QString("Русский"));
    QCOMPARE(item("languageBox")->property("nowIndex").toInt(), 3);

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

void TestScene::installs_data()
{
    QTest::addColumn<bool>("byKeyboard");
    QTest::newRow("with the mouse") << false;
    QTest::newRow("with the keyboard") << true;
}

void TestScene::installs()
{
    QFETCH(bool, byKeyboard);
    use("languageBox", byKeyboard);
    QTRY_VERIFY(item("languageBox")->property("checked").toBool());
    if (byKeyboard) {
        QTest::keyClick(window.data(), Qt::Key_Down);
        QTest::keyClick(window.data(), Qt::Key_End);
        QTest::keyClick(window.data(), Qt::Key_Return);
    } else {
        clickRow(german);
    }
    QCOMPARE(DataManager::getInstance()->getSoftUseLanguage(), QString("_de"));
    QCOMPARE(item("languageBox")->property("checked").toBool(), false);

    use("acceptCheckBox", byKeyboard);
    use("quickInstallButton", byKeyboard);
    QVERIFY(item("initialPage")->isVisible());
    use("acceptCheckBox", byKeyboard);

    use("customPathButton", byKeyboard);
    QVERIFY(item("pathPanel")->isVisible());
    QCOMPARE(item("customPathArrow")->rotation(), 90.0);
    use("autoStartCheckBox", byKeyboard);
    use("shortcutCheckBox", byKeyboard);
    use("pathField", byKeyboard);
    QTest::keyClick(window.data(), Qt::Key_A, Qt::ControlModifier);
    for (const char letter : target.toLatin1())
        QTest::keyClick(window.data(), letter);
    QCOMPARE(item("pathField")->property("text").toString(), target);

    steps.clear();
    connect(item("progressBar"), SIGNAL(valueChanged()), this, SLOT(recordStep()));
    QSignalSpy finished(item("finishPage"), &QQuickItem::visibleChanged);
    use("quickInstallButton", byKeyboard);
    QVERIFY(item("installingPage")->isVisible());
    QVERIFY(!item("initialPage")->isVisible() && !item("pathPanel")->isVisible());
    QCOMPARE(DataManager::getInstance()->getInstallPath(), target);
    QCOMPARE(DataManager::getInstance()->getIsBootUp(), false);
    QVERIFY(finished.wait(30000));
    QVERIFY(!item("installingPage")->isVisible());

    steps.removeDuplicates();
    QStringList expected;
    for (int i = 0; i < 100; ++i)
        expected << QString("%1% ").arg(i)
                + translated(i < 35 ? "One-click acceleration"
                        : i < 70    ? "Smart cloud acceleration"
                                    : "Multi-platform, fully compatible");
    QCOMPARE(steps, expected << "100% ");

    Operating::waitForCopies();
    QCOMPARE(treeOf(target), treeOf(QCoreApplication::applicationDirPath()));
    QFile launcher(target + "/VornRun.sh");
    QVERIFY(launcher.open(QIODevice::ReadOnly));
    QVERIFY(launcher.readAll().endsWith("  " + target.toUtf8() + "/VORN\n"));
    QCOMPARE(focusedName() == "tryItNowButton", byKeyboard);
    QCOMPARE(run("tryItNowButton"), 0);
    QTRY_VERIFY(QFile::exists(target + "/marker"));
}

void TestScene::closingDuringTheCopyCompletesIt()
{
    preparePath();
    click("quickInstallButton");
    QCOMPARE(run("closeButton"), 0);
    window.reset();
    Operating::waitForCopies();
    QCOMPARE(treeOf(target), treeOf(QCoreApplication::applicationDirPath()));
}

void TestScene::chosenFolderLosesItsLeadingSlash()
{
    const QString folder = directory->filePath("mit Ümlaut");
    QVERIFY(QDir().mkpath(folder));
    click("customPathButton");
    click("browseButton");
    QFileDialog *dialog = nullptr;
    const QWidgetList windows = QApplication::topLevelWidgets();
    for (QWidget *widget : windows)
        dialog = dialog ? dialog : qobject_cast<QFileDialog *>(widget);
    QVERIFY(dialog);
    QCOMPARE(dialog->windowTitle(), QString("Select Directory"));
    QMetaObject::invokeMethod(dialog, "reject");
    QCOMPARE(item("pathField")->property("text").toString(), QString("/opt/VornVPN"));

    click("browseButton");
    dialog->setDirectory(folder);
    dialog->selectFile(folder);
    QMetaObject::invokeMethod(dialog, "accept");
    QTRY_COMPARE(item("pathField")->property("text").toString(), folder.mid(1) + "/VornVPN");
}

void TestScene::windowControlsReachTheWindow()
{
    QQuickItem *root = window->rootObject();
    root->setWidth(700);
    root->setHeight(100);
    QCOMPARE(root->size(), QSizeF(640, 520));

    const QPoint before = window->position();
    QTest::mousePress(window.data(), Qt::LeftButton, {}, QPoint(300, 20));
    QTest::mouseMove(window.data(), QPoint(310, 15));
    QCOMPARE(window->position() - before, QPoint(10, -5));
    QTest::mouseRelease(window.data(), Qt::LeftButton, {}, QPoint(300, 20));

    click("miniButton");
    QCOMPARE(window->windowState(), Qt::WindowMinimized);
}

void TestScene::tabGoesThroughEveryControl()
{
    click("customPathButton");
    emit window->rootObject()->findChild<KQHttpManager *>()->initSystemStatus(0);
    const QStringList order{"languageBox", "quickInstallButton", "acceptCheckBox",
        "agreementButton", "customPathButton", "pathField", "browseButton", "autoStartCheckBox",
        "shortcutCheckBox", "miniButton", "closeButton"};
    QStringList reached;
    for (int i = 0; i < order.size(); ++i) {
        QTest::keyClick(window.data(), Qt::Key_Tab);
        reached << focusedName();
    }
    QCOMPARE(reached, order);
    QTest::keyClick(window.data(), Qt::Key_Tab, Qt::ShiftModifier);
    QCOMPARE(focusedName(), QString("miniButton"));

    // What is hidden is passed over, and does not keep the focus.
    use("pathField", true);
    click("customPathButton");
    QCOMPARE(focusedName(), QString("mainWindow"));
    use("customPathButton", true);
    QTest::keyClick(window.data(), Qt::Key_Return);
    QTest::keyClick(window.data(), Qt::Key_Tab);
    QCOMPARE(focusedName(), QString("miniButton"));
}

void TestScene::screenReadersKnowEveryControl()
{
    struct Row {
        const char *item;
        QAccessible::Role role;
        const char *name;
    };
    static const Row rows[] = {
        {"languageBox", QAccessible::ComboBox, "Interface language"},
        {"quickInstallButton", QAccessible::Button, "Quick Install"},
        {"acceptCheckBox", QAccessible::CheckBox, "Accept"},
        {"agreementButton", QAccessible::Button, "Vorn license agreement"},
        {"customPathButton", QAccessible::Button, "Custom path >"},
        {"pathField", QAccessible::EditableText, "Installation directory"},
        {"browseButton", QAccessible::Button, "Browse"},
        {"autoStartCheckBox", QAccessible::CheckBox, "Start Up Automatically"},
        {"shortcutCheckBox", QAccessible::CheckBox, "Create Shortcut"},
        {"progressBar", QAccessible::ProgressBar, "Installation progress"},
        {"tryItNowButton", QAccessible::Button, "Try It Now"},
        {"miniButton", QAccessible::Button, "Minimize"},
        {"closeButton", QAccessible::Button, "Close"},
    };
    for (const int language : {0, german}) {
        QMetaObject::invokeMethod(item("languageBox"), "choose", Q_ARG(QVariant, language));
        for (const Row &row : rows) {
            QQuickItem *spoken = item(row.item);
            for (QQuickItem *child : spoken->childItems())
                spoken = child->inherits("QQuickTextInput") ? child : spoken;
            const QAccessibleInterface *known = QAccessible::queryAccessibleInterface(spoken);
            QVERIFY2(known, row.item);
            QCOMPARE(known->role(), row.role);
            QCOMPARE(known->text(QAccessible::Name), translated(row.name));
        }
    }
}

void TestScene::everyTextFits_data()
{
    QTest::addColumn<int>("language");
    for (int i = 0; i < 5; ++i)
        QTest::newRow(languageCodes[i]) << i;
}

void TestScene::everyTextFits()
{
    QFETCH(int, language);
    QMetaObject::invokeMethod(item("languageBox"), "choose", Q_ARG(QVariant, language));
    call("togglePathPanel");
    QQuickItem *progress = item("installingPage")->childItems().constFirst();
    for (const char *page :
        {"initialPage", "installingPage", "installingPage", "installingPage", "finishPage"}) {
        for (const char *other : {"initialPage", "installingPage", "finishPage"})
            item(other)->setVisible(qstrcmp(page, other) == 0);
        if (qstrcmp(page, "installingPage") == 0)
            progress->setProperty("stage", (progress->property("stage").toInt() + 1) % 3);
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
            for (const QQuickItem *above = text->parentItem(); above; above = above->parentItem())
                QVERIFY2(placeOf(above).adjusted(-1, -1, 1, 1).contains(place), shown);
            for (const QQuickItem *other : texts)
                QVERIFY2(other == text || !placeOf(other).intersects(place), shown);
        }
    }
}

QTEST_MAIN(TestScene)
#include "tst_scene.moc"
