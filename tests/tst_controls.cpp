#include <QQmlComponent>
#include <QQmlEngine>
#include <QQmlExpression>
#include <QQuickItem>
#include <QQuickView>
#include <QSignalSpy>
#include <QTest>

#include "app/StartUp.h"

// The control set on its own, as the client's scenes import it.
class TestControls : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();

    void defaults_data();
    void defaults();
    void buttonAnswersTheMouse_data();
    void buttonAnswersTheMouse();
    void buttonPlacesIconAndLabel();
    void keysPressButtons();
    void listTellsTheChosenRow();
    void arrowKeysWalkThroughTheList();
    void badgeShowsItsOwnTexts();
    void groupKeepsOneChecked();
    void radioButtonTellsOnlyOfAChange();
    void lineEditShowsItsState();
    void placeholderGivesWayToText();

private:
    // Shows the control at the top left, 200 pixels wide, beside a field that can take the focus.
    void show(const QString &control);
    QVariant evaluate(const QString &expression);
    void click(int x, int y) { QTest::mouseClick(view.data(), Qt::LeftButton, {}, QPoint(x, y)); }
    QStringList takeLog()
    {
        return evaluate("scene.takeLog()").toString().split(' ', Qt::SkipEmptyParts);
    }

    QScopedPointer<QQuickView> view;
    QScopedPointer<QObject> scene;
    QQuickItem *control = nullptr;
};

void TestControls::initTestCase()
{
    useSoftwareSceneGraph();
    setUpFonts();
}

void TestControls::init()
{
    scene.reset();
    view.reset(new QQuickView);
    view->resize(400, 400);
}

void TestControls::show(const QString &text)
{
    QQmlComponent component(view->engine());
    component.setData(
        "import QtQuick 2.9\nimport QtQuick.Controls 1.3 as Controls\nimport \"qrc:/VORN\"\n"
        "Item { id: scene; width: 400; height: 400\n"
        "property string log; property alias control: loader.item\n"
        "property real dpiScale: 1\n"
        "function note(text) { log += text + ' ' }\n"
        "function takeLog() { const all = log; log = ''; return all }\n"
        "Controls.ExclusiveGroup { id: group }\n"
        "TextInput { id: other; y: 380; width: 50; height: 20 }\n"
        "property Item second\n"
        "Loader { id: loader; sourceComponent: "
            + text.toUtf8() + " } }",
        QUrl("qrc:/test.qml"));
    scene.reset(component.create(view->rootContext()));
    QVERIFY2(scene, qPrintable(component.errorString()));
    qobject_cast<QQuickItem *>(scene.data())->setParentItem(view->contentItem());
    control = scene->property("control").value<QQuickItem *>();
    QVERIFY(control);
    view->show();
    view->requestActivate();
    QVERIFY(QTest::qWaitForWindowActive(view.data()));
    QTest::mouseMove(view.data(), QPoint(390, 390));
}

// With the control's properties in reach.
QVariant TestControls::evaluate(const QString &expression)
{
    QQmlExpression script(qmlContext(control), control, expression);
    const QVariant value = script.evaluate();
    return script.hasError() ? QVariant(script.error().toString()) : value;
}

void TestControls::defaults_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("expectation");
    const auto add = [](const char *type, const char *expectation) {
        QTest::newRow(type) << type << expectation;
    };
    add("PXNorButton",
        "[width, height, btMesg, btText, textLeftMargin, textColor, pressedTextColor, "
        "releaseTextColor,"
        " hoverTextColor, pointSize, buttonColor, pressedColor, releaseColor, disableColor, btIcon,"
        " pressedIcon, releaseIcon, hoverIcon, bold, textVisible, enabled, padOrStretch, underLine,"
        " hoverOpacity, exitOpacity, borderColor, pressdBorderColor].join()"
        " === "
        "'120,60,,,0,#000000,#000000,#000000,#00000000,14,#00000000,#00000000,#00000000,#00000000,"
        ",,,,false,true,true,true,false,1,1,#000000,#000000'");
    add("PXButton", "[nomerPic, hoverPic, pressPic].join() === ',,'");
    add("PXCheckButton",
        "[width, height, checked, exclusiveGroup, btMesg, btText, textColor, pressedTextColor,"
        " releaseTextColor, fontSize, buttonColor, pressedColor, releaseColor, btIcon, pressedIcon,"
        " releaseIcon, borderColor, pressdBorderColor].join() === '80,60,false,,,,#000000,#000000,"
        "#000000,20,#00000000,#00000000,#00000000,,,,#000000,#000000'"
        " && wrapMode === Text.WordWrap && elide === Text.ElideNone");
    add("PXRadioButton",
        "[radioText, checked, radioColor, radioTextColor, pointSize].join()"
        " === ',false,#ffffff,#ffffff,11' && exclusiveGroup === null");
    const char *combo =
        "[width, height, textSize, nowIndex, boxheight, popListWdith, popListHeight,"
        " popTopMargin, popLeftMargin, m_enabled, nomerPic, hoverPic, pressPic,"
        " textForShow, modelList, backgroundcolor, alignFlag, positonY,"
        " showSelectInBtn, backgroundImage, dropDownImage, sliderImage, checked,"
        " padOrStretch, hoverOpacity].join() === '120,30,16,0,30,0,146,0,0,true,,,,,,"
        "#ffffff,true,-1,true,,,,false,true,1'";
    add("PXComboxNew", combo);
    add("PXCombox",
        qPrintable(QString(combo) + " && modelShowList.length === 0 && exitOpacity === 1"));
    add("PXLineEdit",
        "[width, height, enterImage, exitImge, errorImge, text, textLeftPadding, placeholderText,"
        " errorText, pointSize, inputError, font.family].join()"
        " === '364,45,,,,,30,hello world,hello world,9,false,Microsoft YaHei UI'"
        " && echoMode === TextInput.Normal && validator === null");
    add("PXLineEditNormal",
        "[width, height, enterImage, exitImge, text, color, textLeftPadding, placeholderText,"
        " pointSize, font.family].join()"
        " === '200,30,,,,#000000,30,hello world,9,Microsoft YaHei UI'"
        " && echoMode === TextInput.Normal && validator === null");
}

void TestControls::defaults()
{
    QFETCH(QString, type);
    QFETCH(QString, expectation);
    show(type + " {}");
    QVERIFY2(evaluate(expectation) == true,
        qPrintable(evaluate(expectation.left(expectation.indexOf(" === '"))).toString()));
}

void TestControls::buttonAnswersTheMouse_data()
{
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<QStringList>("told");
    QTest::addColumn<QString>("background");
    QTest::newRow("enabled") << true << QStringList{"pressed", "release", "clicked", "42"}
                             << "#ff0000";
    QTest::newRow("disabled") << false << QStringList{"pressed", "release"} << "#0000ff";
}

void TestControls::buttonAnswersTheMouse()
{
    QFETCH(bool, enabled);
    QFETCH(QStringList, told);
    QFETCH(QString, background);
    show("PXNorButton { btMesg: '42'; btIcon: 'qrc:/image/mini.png'; pressedIcon: "
         "'qrc:/image/drop.png'\n"
         "pressedColor: 'red'; releaseColor: 'lime'; disableColor: 'blue'; exitOpacity: 0.5\n"
         "pressedTextColor: 'red'; releaseTextColor: 'lime'\n"
         "onClicked: scene.note('clicked'); onClickedWithMesg: scene.note(mesg)\n"
         "onPressed: scene.note('pressed'); onRelease: scene.note('release')\n"
         "onMentered: scene.note('in'); onMexited: scene.note('out') }");
    control->setProperty("enabled", enabled);
    const QString state = "[btIcon, color, opacity].join()";
    QCOMPARE(evaluate(state).toString(), QString("qrc:/image/mini.png,#00000000,0.5"));
    QTest::mouseMove(view.data(), QPoint(20, 20));
    QTRY_COMPARE(evaluate(state).toString(), "qrc:/image/drop.png," + background + ",1");
    QCOMPARE(takeLog(), QStringList{"in"});
    click(20, 20);
    QCOMPARE(takeLog(), told);
    QTest::mouseMove(view.data(), QPoint(300, 300));
    QTRY_COMPARE(evaluate(state).toString(),
        QString("qrc:/image/mini.png,%1,0.5").arg(enabled ? "#00ff00" : "#0000ff"));
    QCOMPARE(takeLog(), QStringList{"out"});
}

void TestControls::buttonPlacesIconAndLabel()
{
    show("PXNorButton { width: 200; height: 40; btText: 'Label'; btIcon: 'qrc:/image/mini.png' }");
    QQuickItem *label = nullptr;
    QQuickItem *icon = nullptr;
    for (QQuickItem *child : control->childItems()) {
        label = child->inherits("QQuickText") ? child : label;
        for (QQuickItem *inner : child->childItems())
            icon = inner->inherits("QQuickBorderImage") ? inner : icon;
    }
    QVERIFY(label && icon);
    const auto place = [](const QQuickItem *item) {
        return item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
    };
    QCOMPARE(evaluate("textLength()").toReal(), label->width());
    QVERIFY(
        qAbs(place(label).center().x() - 100) <= 1 && qAbs(place(icon).center().x() - 100) <= 1);
    QCOMPARE(icon->size(), QSizeF(22, 17));
    control->setProperty("padOrStretch", false);
    QCOMPARE(icon->size(), QSizeF(200, 40));
    control->setProperty("textLeftMargin", 12);
    QCOMPARE(icon->size(), QSizeF(22, 17));
    QVERIFY(qAbs(place(icon).center().x() - 20) <= 1);
    QCOMPARE(place(label).x(), 52.0);
    control->setProperty("textLeftMargin", -1);
    QCOMPARE(place(label).x(), 0.0);
    QVERIFY(!icon->isVisible());
}

void TestControls::keysPressButtons()
{
    show("PXNorButton { onClicked: scene.note('clicked') }");
    for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return, Qt::Key_Enter}) {
        control->forceActiveFocus();
        QTest::keyClick(view.data(), key);
        QCOMPARE(takeLog(), QStringList{"clicked"});
    }
    control->setProperty("enabled", false);
    QTest::keyClick(view.data(), Qt::Key_Space);
    QCOMPARE(takeLog(), QStringList());
}

void TestControls::listTellsTheChosenRow()
{
    show("PXComboxNew { boxheight: 26; popListWdith: 100; popListHeight: 126; positonY: 0\n"
         "modelList: ['a', 'b', 'c']; onItemClicked: scene.note('item:' + temp)\n"
         "onSendData: scene.note(index + ':' + text + ':' + checked) }");
    for (const int row : {2, 2, 0}) {
        click(50, 10);
        QCOMPARE(evaluate("checked").toBool(), true);
        QSignalSpy drawn(view.data(), &QQuickWindow::frameSwapped);
        view->update();
        QVERIFY(drawn.wait());
        click(50, 26 + 25 * row + 12);
        const QString text(QChar('a' + row));
        QCOMPARE(
            takeLog(), (QStringList{"item:" + text, QString("%1:%2:true").arg(row).arg(text)}));
        QCOMPARE(evaluate("[nowIndex, textForShow, checked].join()").toString(),
            QString("%1,%2,false").arg(row).arg(text));
    }
    click(50, 10);
    click(50, 10);
    QCOMPARE(evaluate("checked").toBool(), false);
}

void TestControls::arrowKeysWalkThroughTheList()
{
    show("PXComboxNew { modelList: ['a', 'b', 'c', 'd']; nowIndex: 1; onSendData: scene.note(text) "
         "}");
    control->forceActiveFocus();
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Escape})
        QTest::keyClick(view.data(), key);
    QCOMPARE(evaluate("[nowIndex, checked].join()").toString(), QString("1,false"));
    for (const Qt::Key key :
        {Qt::Key_Space, Qt::Key_Down, Qt::Key_Down, Qt::Key_Down, Qt::Key_Up, Qt::Key_Return})
        QTest::keyClick(view.data(), key);
    QCOMPARE(takeLog(), QStringList{"c"});
    QCOMPARE(evaluate("checked").toBool(), false);
}

void TestControls::badgeShowsItsOwnTexts()
{
    show("PXCombox { modelList: ['English', 'Deutsch']; modelShowList: ['EN', 'DE']\n"
         "onClick: scene.note('click'); onItemClicked: scene.note(temp + textForShow) }");
    click(60, 15);
    QCOMPARE(takeLog(), QStringList{"click"});
    QCOMPARE(evaluate("checked").toBool(), true);
    evaluate("other.forceActiveFocus()");
    QCOMPARE(evaluate("checked").toBool(), false);
    control->forceActiveFocus();
    for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Down, Qt::Key_Return})
        QTest::keyClick(view.data(), key);
    QCOMPARE(takeLog(), QStringList{"DeutschDE"});
}

void TestControls::groupKeepsOneChecked()
{
    show("Column { PXCheckButton { exclusiveGroup: group; onClicked: scene.note('first') }\n"
         "PXCheckButton { exclusiveGroup: group; checked: true } PXCheckButton {} }");
    const QString states =
        "children[0].checked + ' ' + children[1].checked + ' ' + children[2].checked";
    click(40, 30);
    QCOMPARE(evaluate(states).toString(), QString("true false false"));
    click(40, 30);
    click(40, 150);
    QCOMPARE(evaluate(states).toString(), QString("true false true"));
    QCOMPARE(takeLog(), (QStringList{"first", "first"}));
}

void TestControls::radioButtonTellsOnlyOfAChange()
{
    show("Column { PXRadioButton { radioText: 'one'; exclusiveGroup: group; onClick: "
         "scene.note('one') }\n"
         "PXRadioButton { radioText: 'two'; exclusiveGroup: group; checked: true } }");
    click(5, 5);
    click(5, 5);
    QCOMPARE(takeLog(), QStringList{"one"});
    QCOMPARE(evaluate("children[0].checked + ' ' + children[1].checked").toString(),
        QString("true false"));
    QVERIFY(evaluate("children[0].textLength()").toReal() > 10);
}

void TestControls::lineEditShowsItsState()
{
    show(
        "PXLineEdit { enterImage: 'qrc:/image/lineEditBg.png'; exitImge: 'qrc:/image/rightBg.png'\n"
        "errorImge: 'qrc:/image/comboxBg.png' }");
    const QString state =
        "[children[0].source, children[1].visible, children[1].color, errorText].join()";
    QCOMPARE(
        evaluate(state).toString(), QString("qrc:/image/rightBg.png,false,#666666,hello world"));
    click(100, 20);
    QCOMPARE(
        evaluate(state).toString(), QString("qrc:/image/lineEditBg.png,true,#58aa64,hello world"));
    evaluate("inputError = true, errorText = 'wrong'");
    QCOMPARE(evaluate(state).toString(), QString("qrc:/image/comboxBg.png,true,#c84031,wrong"));
    evaluate("inputError = false, other.forceActiveFocus(), text = 'x'");
    QCOMPARE(
        evaluate(state).toString(), QString("qrc:/image/rightBg.png,true,#666666,hello world"));
}

void TestControls::placeholderGivesWayToText()
{
    show("PXLineEditNormal {}");
    const QString opacity = "children[1].opacity";
    QCOMPARE(evaluate(opacity).toReal(), 1.0);
    click(100, 15);
    QTRY_COMPARE(evaluate(opacity).toReal(), 0.0);
    evaluate("other.forceActiveFocus()");
    QTRY_COMPARE(evaluate(opacity).toReal(), 1.0);
    QCOMPARE(evaluate("children[2].cursorVisible").toBool(), false);
    evaluate("text = 'x'");
    QTRY_COMPARE(evaluate(opacity).toReal(), 0.0);
}

QTEST_MAIN(TestControls)
#include "tst_controls.moc"
