#include "Support.h"
#include "app/StartUp.h"

#include <QQmlComponent>
#include <QQmlExpression>
#include <QQuickItem>
#include <QQuickView>

// "move X Y", "click X Y", "key NAME", or a script with the control's properties in reach; then
// what the probe, another script, has to say.
struct Step {
    QString action;
    QString probe;
    QString expected;
};
using Behaviour = Table<QString, std::vector<Step>>; // the control, the steps

// Around the control: a group, a field that can take the focus, and a note book.
static const QString scenery = R"(
import QtQuick 2.9
import QtQuick.Controls 1.3 as Controls
import "qrc:/VORN"
Item {
    id: scene; width: 400; height: 400
    property string log; property real dpiScale: 1
    property alias control: loader.item
    function note(text) { log += text + ' ' }
    function notes() { return log.trim() } // since the last action
    Controls.ExclusiveGroup { id: group }
    TextInput { id: other; y: 380; width: 50; height: 20 }
    Loader { id: loader; sourceComponent: %1 }
})";

// The control set on its own, as the client's scenes import it.
class TestControls : public QObject {
    Q_OBJECT

    QScopedPointer<QQuickView> view;
    QQuickItem *control = nullptr;

    QString evaluate(const QString &script) const
    {
        QQmlExpression expression(qmlContext(control), control, script);
        const QVariant value = expression.evaluate();
        return expression.hasError() ? expression.error().toString() : value.toString();
    }

    void act(const QString &action)
    {
        const QStringList words = action.split(' ');
        const QPoint place(words.value(1).toInt(), words.value(2).toInt());
        evaluate("scene.log = ''");
        QSignalSpy drawn(view.data(), &QQuickWindow::frameSwapped);
        if (words.first() == "move")
            QTest::mouseMove(view.data(), place);
        else if (words.first() == "click")
            QTest::mouseClick(view.data(), Qt::LeftButton, {}, place);
        else if (words.first() == "key")
            QTest::keySequence(view.data(), words.last());
        else
            evaluate(action);
        view->update();
        QVERIFY(drawn.wait());
    }

private slots:
    void initTestCase()
    {
        useSoftwareSceneGraph();
        setUpFonts();
    }

    void behaves_data()
    {
        // clang-format off
        const Behaviour row;
        const QString button = "PXNorButton { enabled: %1; btMesg: '42'; btIcon: 'a.png'; pressedIcon: 'b.png'\n"
            "pressedColor: 'red'; releaseColor: 'lime'; disableColor: 'blue'; exitOpacity: 0.5\n"
            "onClicked: scene.note('clicked'); onClickedWithMesg: scene.note(mesg); onPressed: scene.note('pressed')\n"
            "onRelease: scene.note('release'); onMentered: scene.note('in'); onMexited: scene.note('out') }";
        const QString look = "[btIcon, color, opacity].join().replace('qrc:/', '')";
        row("button", button.arg("true"), {{"", look, "a.png,#00000000,0.5"}, {"move 20 20", look, "b.png,#ff0000,1"},
            {"", "scene.notes()", "in"}, {"click 20 20", "scene.notes()", "pressed release clicked 42"},
            {"move 300 300", look, "a.png,#00ff00,0.5"}, {"", "scene.notes()", "out"}, {"forceActiveFocus()", "activeFocus", "true"},
            {"key Space", "scene.notes()", "pressed release clicked 42"}, {"key Return", "scene.notes()", "pressed release clicked 42"}});
        row("disabled button", button.arg("false"), {{"move 20 20", look, "b.png,#0000ff,1"}, {"", "scene.notes()", "in"},
            {"click 20 20", "scene.notes()", "pressed release"}, {"move 300 300", look, "a.png,#0000ff,0.5"}, {"", "scene.notes()", "out"}});
        const QString icon = "[children[0].children[0].x, children[0].children[0].width].join()"; // in its frame
        const QString label = "[children[0].visible, children[1].x].join()";
        row("icon and label", "PXNorButton { width: 202; height: 40; btText: 'text'; btIcon: 'qrc:/image/mini.png' }",
            {{"", icon, "90,22"}, {"padOrStretch = false", icon, "0,202"}, {"", "children[1].x * 2 + textLength()", "202"},
            {"textLeftMargin = 12", icon, "9,22"}, {"", label, "true,52"}, {"textLeftMargin = -1", label, "false,0"}});
        const QString picture = "__panel.children[0].item.children[0].source.toString()";
        row("button of pictures", "PXButton { nomerPic: 'qrc:/image/mini.png'; hoverPic: 'qrc:/image/drop.png' }",
            {{"", picture, "qrc:/image/mini.png"}, {"move 5 5", picture, "qrc:/image/drop.png"}, {"move 300 300", picture, "qrc:/image/mini.png"}});
        const QString box = "[nowIndex, textForShow, checked].join()";
        row("language box", "PXComboxNew { boxheight: 26; popListWdith: 100; popListHeight: 126; positonY: 0; modelList: ['a', 'b', 'c']\n"
            "onItemClicked: scene.note('item ' + temp); onSendData: scene.note(index + text + checked) }",
            {{"click 50 10", box, "0,,true"}, {"click 50 88", box, "2,c,false"}, {"", "scene.notes()", "item c 2ctrue"},
            {"click 50 10", box, "2,c,true"}, {"click 50 88", "scene.notes()", "item c 2ctrue"}, {"click 50 10", box, "2,c,true"},
            {"click 50 10", box, "2,c,false"}, {"key Down", box, "2,c,true"}, {"key Up", box, "2,c,true"}, {"key Esc", box, "2,c,false"},
            {"key Space", box, "2,c,true"}, {"key Home", box, "2,c,true"}, {"key Down", box, "2,c,true"}, {"key Return", box, "1,b,false"},
            {"", "scene.notes()", "item b 1btrue"}});
        row("badge", "PXCombox { modelList: ['English', 'Deutsch']; modelShowList: ['EN', 'DE']\n"
            "onClick: scene.note('click'); onItemClicked: scene.note(temp + textForShow) }",
            {{"click 60 15", box, "0,,true"}, {"", "scene.notes()", "click"}, {"other.forceActiveFocus()", box, "0,,false"},
            {"forceActiveFocus()", box, "0,,false"}, {"key Down", box, "0,,true"}, {"key End", box, "0,,true"},
            {"key Return", box, "1,DE,false"}, {"", "scene.notes()", "DeutschDE"}});
        const QString checks = "[0, 1, 2].map(function(i) { return children[i].checked }).join()";
        row("check buttons", "Column { PXCheckButton { exclusiveGroup: group; onClicked: scene.note('first') }\n"
            "PXCheckButton { exclusiveGroup: group; checked: true } PXCheckButton {} }",
            {{"click 40 30", checks, "true,false,false"}, {"click 40 30", checks, "true,false,false"}, {"", "scene.notes()", "first"},
            {"click 40 150", checks, "true,false,true"}, {"", "scene.notes()", ""}});
        row("radio buttons", "Column { PXRadioButton { radioText: 'one'; exclusiveGroup: group; onClick: scene.note('one') }\n"
            "PXRadioButton { exclusiveGroup: group; checked: true } PXRadioButton {} }",
            {{"click 5 5", checks, "true,false,false"}, {"", "scene.notes()", "one"}, {"click 5 5", "scene.notes()", ""},
            {"", "children[0].textLength() > 10", "true"}});
        const QString field = "[children[0].source, children[1].visible, children[1].color, errorText].join()";
        row("line edit", "PXLineEdit { enterImage: 'a'; exitImge: 'b'; errorImge: 'c' }", {{"", field, "qrc:/b,false,#666666,hello world"},
            {"click 100 20", field, "qrc:/a,true,#58aa64,hello world"}, {"inputError = true, errorText = 'no'", field, "qrc:/c,true,#c84031,no"},
            {"inputError = false", field, "qrc:/a,true,#58aa64,hello world"},
            {"text = 'x', other.forceActiveFocus()", field, "qrc:/b,true,#666666,hello world"}});
        const QString placeholder = "children[1].opacity";
        row("placeholder", "PXLineEditNormal {}", {{"", placeholder, "1"}, {"click 100 15", placeholder, "0"},
            {"other.forceActiveFocus()", placeholder, "1"}, {"", "children[2].children[0].cursorVisible", "false"}, {"text = 'x'", placeholder, "0"}});
        // clang-format on
    }

    void behaves()
    {
        const auto [text, steps] = Behaviour::fetch();
        view.reset(new QQuickView);
        QQmlComponent component(view->engine());
        component.setData(scenery.arg(text).toUtf8(), QUrl("qrc:/test.qml"));
        QObject *scene = component.create(view->rootContext());
        QVERIFY2(scene, qPrintable(component.errorString()));
        view->setContent(QUrl(), nullptr, scene);
        control = scene->property("control").value<QQuickItem *>();
        view->show();
        view->requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(view.data()));
        QTest::mouseMove(view.data(), QPoint(390, 390));
        for (const auto &[action, probe, expected] : steps) {
            if (!action.isEmpty())
                act(action);
            QTRY_COMPARE(evaluate(probe), expected);
        }
    }
};

QTEST_MAIN(TestControls)
#include "tst_controls.moc"
