#include <QMetaEnum>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQmlExpression>
#include <QQuickItem>
#include <QQuickView>
#include <QSignalSpy>
#include <QTest>

#include "app/StartUp.h"

namespace {

// "move X Y", "click X Y", "key NAME", or a script with the control's properties in reach; then
// what the probe, another script, has to say.
struct Step {
    QString action;
    QString probe;
    QString expected;
};

// Around the control: a group, a field that can take the focus, and a note book.
const QByteArray scenery = R"(
import QtQuick 2.9
import QtQuick.Controls 1.3 as Controls
import "qrc:/VORN"
Item {
    id: scene
    property string log
    property real dpiScale: 1
    property alias control: loader.item
    function note(text) { log += text + ' ' }
    function notes() { return log.trim() } // since the last action
    width: 400; height: 400
    Controls.ExclusiveGroup { id: group }
    TextInput { id: other; y: 380; width: 50; height: 20 }
    Loader { id: loader; sourceComponent: %1 }
})";

} // namespace
Q_DECLARE_METATYPE(QVector<Step>)

// The control set on its own, as the client's scenes import it.
class TestControls : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void behaves_data();
    void behaves();

private:
    void show(const QString &control);
    QString evaluate(const QString &script) const;
    void act(const QString &action);

    QScopedPointer<QQuickView> view;
    QQuickItem *control = nullptr;
};

void TestControls::initTestCase()
{
    useSoftwareSceneGraph();
    setUpFonts();
}

void TestControls::show(const QString &text)
{
    view.reset(new QQuickView);
    QQmlComponent component(view->engine());
    component.setData(QString(scenery).arg(text).toUtf8(), QUrl("qrc:/test.qml"));
    QObject *scene = component.create(view->rootContext());
    QVERIFY2(scene, qPrintable(component.errorString()));
    view->setContent(QUrl(), nullptr, scene);
    control = scene->property("control").value<QQuickItem *>();
    QVERIFY(control);
    view->show();
    view->requestActivate();
    QVERIFY(QTest::qWaitForWindowActive(view.data()));
    QTest::mouseMove(view.data(), QPoint(390, 390));
}

QString TestControls::evaluate(const QString &script) const
{
    QQmlExpression expression(qmlContext(control), control, script);
    const QVariant value = expression.evaluate();
    return expression.hasError() ? expression.error().toString() : value.toString();
}

void TestControls::act(const QString &action)
{
    if (action.isEmpty()) {
        return;
    }
    evaluate("scene.log = ''");
    const QStringList words = action.split(' ');
    const QPoint place(words.value(1).toInt(), words.value(2).toInt());
    QSignalSpy drawn(view.data(), &QQuickWindow::frameSwapped);
    if (words.first() == "move")
        QTest::mouseMove(view.data(), place);
    else if (words.first() == "click")
        QTest::mouseClick(view.data(), Qt::LeftButton, {}, place);
    else if (words.first() == "key")
        QTest::keyClick(view.data(),
            Qt::Key(QMetaEnum::fromType<Qt::Key>().keyToValue(qPrintable("Key_" + words.last()))));
    else
        evaluate(action);
    view->update();
    QVERIFY(drawn.wait());
}

void TestControls::behaves_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QVector<Step>>("steps");

    const QString button =
        "PXNorButton { enabled: %1; btMesg: '42'; btIcon: 'a.png'; pressedIcon: 'b.png'\n"
        "pressedColor: 'red'; releaseColor: 'lime'; disableColor: 'blue'; exitOpacity: 0.5\n"
        "onClicked: scene.note('clicked'); onClickedWithMesg: scene.note(mesg)\n"
        "onPressed: scene.note('pressed'); onRelease: scene.note('release')\n"
        "onMentered: scene.note('in'); onMexited: scene.note('out') }";
    const QString look = "[btIcon, color, opacity].join().replace('qrc:/', '')";
    QTest::newRow("button") << button.arg("true")
                            << QVector<Step>{{"", look, "a.png,#00000000,0.5"},
                                   {"move 20 20", look, "b.png,#ff0000,1"},
                                   {"", "scene.notes()", "in"},
                                   {"click 20 20", "scene.notes()", "pressed release clicked 42"},
                                   {"move 300 300", look, "a.png,#00ff00,0.5"},
                                   {"", "scene.notes()", "out"},
                                   {"forceActiveFocus()", "activeFocus", "true"},
                                   {"key Space", "scene.notes()", "pressed release clicked 42"},
                                   {"key Return", "scene.notes()", "pressed release clicked 42"}};
    QTest::newRow("disabled button")
        << button.arg("false")
        << QVector<Step>{{"move 20 20", look, "b.png,#0000ff,1"}, {"", "scene.notes()", "in"},
               {"click 20 20", "scene.notes()", "pressed release"},
               {"move 300 300", look, "a.png,#0000ff,0.5"}, {"", "scene.notes()", "out"}};
    // The icon in its frame, and the label.
    const QString icon = "[children[0].children[0].x, children[0].children[0].width].join()";
    const QString label = "[children[0].visible, children[1].x].join()";
    QTest::newRow("icon and label")
        << "PXNorButton { width: 202; height: 40; btText: 'text'; btIcon: 'qrc:/image/mini.png' }"
        << QVector<Step>{{"", icon, "90,22"}, {"padOrStretch = false", icon, "0,202"},
               {"", "children[1].x * 2 + textLength()", "202"},
               {"textLeftMargin = 12", icon, "9,22"}, {"", label, "true,52"},
               {"textLeftMargin = -1", label, "false,0"}};

    const QString picture = "__panel.children[0].item.children[0].source.toString()";
    QTest::newRow("button of pictures")
        << "PXButton { nomerPic: 'qrc:/image/mini.png'; hoverPic: 'qrc:/image/drop.png' }"
        << QVector<Step>{{"", picture, "qrc:/image/mini.png"},
               {"move 5 5", picture, "qrc:/image/drop.png"},
               {"move 300 300", picture, "qrc:/image/mini.png"}};

    const QString box = "[nowIndex, textForShow, checked].join()";
    QTest::newRow("language box")
        << "PXComboxNew { boxheight: 26; popListWdith: 100; popListHeight: 126; positonY: 0\n"
           "modelList: ['a', 'b', 'c']; onItemClicked: scene.note('item ' + temp)\n"
           "onSendData: scene.note(index + text + checked) }"
        << QVector<Step>{{"click 50 10", box, "0,,true"}, {"click 50 88", box, "2,c,false"},
               {"", "scene.notes()", "item c 2ctrue"}, {"click 50 10", box, "2,c,true"},
               {"click 50 88", "scene.notes()", "item c 2ctrue"}, {"click 50 10", box, "2,c,true"},
               {"click 50 10", box, "2,c,false"}, {"key Down", box, "2,c,true"},
               {"key Up", box, "2,c,true"}, {"key Escape", box, "2,c,false"},
               {"key Space", box, "2,c,true"}, {"key Home", box, "2,c,true"},
               {"key Down", box, "2,c,true"}, {"key Return", box, "1,b,false"},
               {"", "scene.notes()", "item b 1btrue"}};
    QTest::newRow("badge")
        << "PXCombox { modelList: ['English', 'Deutsch']; modelShowList: ['EN', 'DE']\n"
           "onClick: scene.note('click'); onItemClicked: scene.note(temp + textForShow) }"
        << QVector<Step>{{"click 60 15", box, "0,,true"}, {"", "scene.notes()", "click"},
               {"other.forceActiveFocus()", box, "0,,false"},
               {"forceActiveFocus()", box, "0,,false"}, {"key Down", box, "0,,true"},
               {"key End", box, "0,,true"}, {"key Return", box, "1,DE,false"},
               {"", "scene.notes()", "DeutschDE"}};

    const QString checks = "[0, 1, 2].map(function(i) { return children[i].checked }).join()";
    QTest::newRow("check buttons")
        << "Column { PXCheckButton { exclusiveGroup: group; onClicked: scene.note('first') }\n"
           "PXCheckButton { exclusiveGroup: group; checked: true } PXCheckButton {} }"
        << QVector<Step>{{"click 40 30", checks, "true,false,false"},
               {"click 40 30", checks, "true,false,false"}, {"", "scene.notes()", "first"},
               {"click 40 150", checks, "true,false,true"}, {"", "scene.notes()", ""}};
    QTest::newRow("radio buttons")
        << "Column { PXRadioButton { radioText: 'one'; exclusiveGroup: group; onClick: "
           "scene.note('one') }\n"
           "PXRadioButton { exclusiveGroup: group; checked: true } PXRadioButton {} }"
        << QVector<Step>{{"click 5 5", checks, "true,false,false"}, {"", "scene.notes()", "one"},
               {"click 5 5", "scene.notes()", ""}, {"", "children[0].textLength() > 10", "true"}};
    const QString field =
        "[children[0].source, children[1].visible, children[1].color, errorText].join()";
    QTest::newRow("line edit")
        << "PXLineEdit { enterImage: 'a'; exitImge: 'b'; errorImge: 'c' }"
        << QVector<Step>{{"", field, "qrc:/b,false,#666666,hello world"},
               {"click 100 20", field, "qrc:/a,true,#58aa64,hello world"},
               {"inputError = true, errorText = 'no'", field, "qrc:/c,true,#c84031,no"},
               {"inputError = false", field, "qrc:/a,true,#58aa64,hello world"},
               {"text = 'x', other.forceActiveFocus()", field, "qrc:/b,true,#666666,hello world"}};
    const QString placeholder = "children[1].opacity";
    QTest::newRow("placeholder") << "PXLineEditNormal {}"
                                 << QVector<Step>{{"", placeholder, "1"},
                                        {"click 100 15", placeholder, "0"},
                                        {"other.forceActiveFocus()", placeholder, "1"},
                                        {"", "children[2].cursorVisible", "false"},
                                        {"text = 'x'", placeholder, "0"}};
}

void TestControls::behaves()
{
    QFETCH(QString, text);
    QFETCH(QVector<Step>, steps);
    show(text);
    for (const Step &step : qAsConst(steps)) {
        act(step.action);
        QTRY_COMPARE(evaluate(step.probe), step.expected);
    }
}

QTEST_MAIN(TestControls)
#include "tst_controls.moc"
