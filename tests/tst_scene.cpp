#include <QAccessible>
#include <QApplication>
#include <QDesktopServices>
#include <QDirIterator>
#include <QFileDialog>
#include <QQuickItem>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include "ClosedWindows.h"
#include "api/KQHttpManager.h"
#include "app/PXMainWindows.h"
#include "app/StartUp.h"
#include "base/Deployment.h"
#include "installer/Operating.h"
#include "settings/DataManager.h"

namespace {

constexpr int german = 4; // in the language list

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
    while (files.hasNext())
        entries << files.next().mid(directory.size()) + QString(" %1").arg(files.fileInfo().size());
    entries.sort();
    return entries;
}

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
    for (QQuickItem *item : itemsOf(top)) {
        if (item->inherits("QQuickText") && item->isVisible() && item->property("text") != "")
            texts << item;
    }
    return texts;
}

QRectF placeOf(const QQuickItem *item) { return item->mapRectToScene(item->boundingRect()); }

QString translated(const char *source) { return QCoreApplication::translate("main", source); }

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
    void cleanupTestCase() { QVERIFY(freeClosedWindows()); }

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
    void everyTextFits();

private:
    QQuickItem *item(const QString &name) const;
    QVariant get(const char *name, const char *property) { return item(name)->property(property); }
    QString focusedName() const;
    void key(int code, Qt::KeyboardModifiers with = {})
    {
        QTest::keyClick(window.data(), Qt::Key(code), with);
    }
    void clickAt(const QPointF &place)
    {
        QTest::mouseClick(window.data(), Qt::LeftButton, {}, place.toPoint());
    }
    void click(const QString &name) { clickAt(placeOf(item(name)).center()); }
    void use(const QString &name, bool byKeyboard);
    bool prepareTarget(bool byKeyboard);
    void chooseLanguage(int row)
    {
        QMetaObject::invokeMethod(item("languageBox"), "choose", Q_ARG(QVariant, row));
    }
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
    // Enough for the copy to outlast the click that closes the window.
    for (int i = 0; i < 300; ++i)
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
    chooseLanguage(0);
}

void TestScene::cleanup()
{
    window.reset();
    Operating::waitForCopies();
}

QQuickItem *TestScene::item(const QString &name) const
{
    QQuickItem *found = nullptr;
    for (QQuickItem *candidate : itemsOf(window->rootObject()))
        found = candidate->objectName() == name ? candidate : found;
    return found;
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
    if (!byKeyboard)
        return click(name);
    for (int i = 0; i < 12 && focusedName() != name; ++i)
        key(Qt::Key_Tab);
    QCOMPARE(focusedName(), name);
    key(Qt::Key_Space);
}

// Types the path, and unticks what would write outside of it.
bool TestScene::prepareTarget(bool byKeyboard)
{
    for (const char *name :
        {"customPathButton", "autoStartCheckBox", "shortcutCheckBox", "pathField"})
        use(name, byKeyboard);
    key(Qt::Key_A, Qt::ControlModifier);
    for (const char letter : target.toLatin1())
        QTest::keyClick(window.data(), letter);
    return get("pathField", "text") == target && !get("autoStartCheckBox", "checked").toBool()
        && !get("shortcutCheckBox", "checked").toBool();
}

// Runs the event loop, clicks, and tells how the loop ended.
int TestScene::run(const QString &clicked)
{
    QMetaObject::invokeMethod(
        this, [this, clicked] { click(clicked); }, Qt::QueuedConnection);
    return QApplication::exec();
}

void TestScene::recordStep()
{
    const QList<QQuickItem *> texts = shownTexts(item("installingPage"));
    steps << get("percentText", "text").toString()
            + (texts.isEmpty() ? QString() : ' ' + texts.first()->property("text").toString());
}

void TestScene::firstFrameNeedsFewObjects()
{
    QSet<QObject *> objects;
    for (QQuickItem *found : itemsOf(window->rootObject())) {
        objects << found;
        for (QObject *child : found->findChildren<QObject *>())
            objects << child;
    }
    QVERIFY2(objects.size() <= 200, qPrintable(QString::number(objects.size())));
    QVERIFY(!item("tryItNowButton"));
}

void TestScene::pagesExistWhenSomeoneIsFasterThanTheLoaders()
{
    window.reset();
    window.reset(new PXMainWindows);
    QVERIFY(!item("pathField"));
    QMetaObject::invokeMethod(window->rootObject(), "togglePathPanel");
    QVERIFY(item("pathField") && item("progressBar") && item("tryItNowButton"));
    QCOMPARE(get("pathField", "text"), QVariant("/opt/VornVPN"));
}

void TestScene::serverSetsLanguageAndEnablesTheAgreement()
{
    auto *server = window->rootObject()->findChild<KQHttpManager *>();
    emit server->sendDefaultLanguage(3);
    QCOMPARE(DataManager::getInstance()->getSoftUseLanguage(), QString("_ru"));
    QCOMPARE(get("languageBox", "textForShow"), QVariant("Русский"));
    QCOMPARE(get("languageBox", "nowIndex"), QVariant(3));

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
    QSignalSpy drawn(window.data(), &QQuickWindow::frameSwapped);
    QVERIFY(drawn.wait());
    const QRectF list = placeOf(item("list"));
    if (byKeyboard) {
        key(Qt::Key_End);
        key(Qt::Key_Return);
    } else {
        clickAt(list.topLeft() + QPointF(30, 25 * german + 12));
    }
    QCOMPARE(DataManager::getInstance()->getSoftUseLanguage(), QString("_de"));
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
    QCOMPARE(DataManager::getInstance()->getIsBootUp(), false);
    QVERIFY(finished.wait(30000));
    QVERIFY(!item("installingPage")->isVisible());

    QStringList expected;
    for (int i = 0; i < 100; ++i)
        expected << QString("%1% ").arg(i)
                + translated(i < 35 ? "One-click acceleration"
                        : i < 70    ? "Smart cloud acceleration"
                                    : "Multi-platform, fully compatible");
    steps.removeDuplicates();
    QCOMPARE(steps, expected << "100%");

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
    QVERIFY(prepareTarget(false));
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
    QCOMPARE(get("pathField", "text"), QVariant("/opt/VornVPN"));

    click("browseButton");
    dialog->setDirectory(folder);
    dialog->selectFile(folder);
    QMetaObject::invokeMethod(dialog, "accept");
    QTRY_COMPARE(get("pathField", "text").toString(), folder.mid(1) + "/VornVPN");
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
        key(Qt::Key_Tab);
        reached << focusedName();
    }
    QCOMPARE(reached, order);
    key(Qt::Key_Tab, Qt::ShiftModifier);
    QCOMPARE(focusedName(), QString("miniButton"));

    // What is hidden is passed over, and does not keep the focus.
    use("pathField", true);
    click("customPathButton");
    QCOMPARE(focusedName(), QString("mainWindow"));
    use("customPathButton", true);
    key(Qt::Key_Return);
    key(Qt::Key_Tab);
    QCOMPARE(focusedName(), QString("miniButton"));
}

void TestScene::screenReadersKnowEveryControl()
{
    static const std::tuple<const char *, QAccessible::Role, const char *> rows[] = {
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
        chooseLanguage(language);
        for (const auto &[object, role, name] : rows) {
            QQuickItem *spoken = item(object);
            for (QQuickItem *child : spoken->childItems())
                spoken = child->inherits("QQuickTextInput") ? child : spoken;
            const QAccessibleInterface *known = QAccessible::queryAccessibleInterface(spoken);
            QVERIFY2(known && known->role() == role, object);
            QCOMPARE(known->text(QAccessible::Name), translated(name));
        }
    }
}

void TestScene::everyTextFits()
{
    click("customPathButton");
    QQuickItem *progress = item("installingPage")->childItems().constFirst();
    const QStringList pages{
        "initialPage", "finishPage", "installingPage", "installingPage", "installingPage"};
    for (int i = 0; i < 5 * pages.size(); ++i) {
        chooseLanguage(i / pages.size());
        for (const QString &page : pages)
            item(page)->setVisible(page == pages.at(i % pages.size()));
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
            for (const QQuickItem *above = text->parentItem(); above; above = above->parentItem())
                QVERIFY2(placeOf(above).adjusted(-1, -1, 1, 1).contains(place), shown);
            for (const QQuickItem *other : texts)
                QVERIFY2(other == text || !placeOf(other).intersects(place), shown);
        }
    }
}

QTEST_MAIN(TestScene)
#include "tst_scene.moc"
