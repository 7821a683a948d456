#include "Support.h"
#include "app/StartUp.h"

#include <QQmlComponent>
#include <QQmlExpression>
#include <QQuickItem>
#include <QQuickView>

namespace {

// Around the control: a group, a field that can take the focus, and a note book.
const QString scenery = R"(
import QtQuick 2.9
import QtQuick.Controls 1.3 as Controls
import "qrc:/VORN"
Item {
    id: scene; width: 400; height: 400
    property string log; property real dpiScale: 1
    property alias control: loader.item
    function note(text) { log += text + ' ' }
    Controls.ExclusiveGroup { id: group }
    TextInput { id: other; y: 380; width: 50; height: 20 }
    Loader { id: loader; sourceComponent: %1 }
})";

constexpr QPoint nowhere(300, 300);

struct ButtonLook {
    bool enabled;
    QString hovered; // icon, colour, opacity
    QString left;
    QString clicked; // the signals of a click
};

struct Layout {
    QString property;
    QString value;
    QString icon; // place in its frame and width
    QString label; // whether the icon is shown, and the place of the label
};

struct Field {
    QString state; // set on the field
    bool focused;
    QString background;
    QString caption; // whether it is shown, its colour and text
};

} // namespace

// The control set on its own, as the client's scenes import it.
class TestControls : public QObject {
    Q_OBJECT

    QScopedPointer<QQuickView> view;
    QQuickItem *control = nullptr;

    // The control's properties are in reach of the script.
    QString value(const QString &script) const
    {
        QQmlExpression expression(qmlContext(control), control, script);
        const QVariant value = expression.evaluate();
        return expression.hasError() ? expression.error().toString() : value.toString();
    }

    QString takeNotes() const
    {
        const QString notes = value("scene.log.trim()");
        value("scene.log = ''");
        return notes;
    }

    void load(const QString &qml)
    {
        view.reset(new QQuickView);
        QQmlComponent component(view->engine());
        component.setData(scenery.arg(qml).toUtf8(), QUrl("qrc:/test.qml"));
        QObject *scene = component.create(view->rootContext());
        QVERIFY2(scene, qPrintable(component.errorString()));
        view->setContent(QUrl(), nullptr, scene);
        control = scene->property("control").value<QQuickItem *>();
        view->show();
        view->requestActivate();
        QVERIFY(QTest::qWaitForWindowActive(view.data()));
        moveTo(nowhere);
    }

    void moveTo(QPoint place)
    {
        QTest::mouseMove(view.data(), place);
        QSignalSpy drawn(view.data(), &QQuickWindow::frameSwapped);
        view->update(); // a scene hears of the mouse with the next frame
        QVERIFY(drawn.wait());
    }

    void click(QPoint place) { QTest::mouseClick(view.data(), Qt::LeftButton, {}, place); }
    void press(Qt::Key key) { QTest::keyClick(view.data(), key); }

private slots:
    void initTestCase()
    {
        useSoftwareSceneGraph();
        setUpFonts();
    }

    void buttonFollowsTheMouse_data()
    {
        const Rows<ButtonLook> row;
        row("enabled",
            {true, "b.png,#ff0000,1", "a.png,#00ff00,0.5", "pressed release clicked 42"});
        row("disabled", {false, "b.png,#0000ff,1", "a.png,#0000ff,0.5", "pressed release"});
    }

    void buttonFollowsTheMouse()
    {
        const auto [enabled, hovered, left, clicked] = Rows<ButtonLook>::fetch();
        load(R"(PXNorButton {
            btMesg: '42'; btIcon: 'a.png'; pressedIcon: 'b.png'; pressedColor: 'red'
            releaseColor: 'lime'; disableColor: 'blue'; exitOpacity: 0.5
            onClicked: scene.note('clicked'); onClickedWithMesg: scene.note(mesg)
            onPressed: scene.note('pressed'); onRelease: scene.note('release')
            onMentered: scene.note('in'); onMexited: scene.note('out') })");
        control->setProperty("enabled", enabled);
        const QString look = "[btIcon, color, opacity].join().replace('qrc:/', '')";
        QCOMPARE(value(look), "a.png,#00000000,0.5");
        moveTo({20, 20});
        QCOMPARE(value(look), hovered);
        QCOMPARE(takeNotes(), "in");
        click({20, 20});
        QCOMPARE(takeNotes(), clicked);
        QVERIFY(control->hasActiveFocus());
        moveTo(nowhere);
        QCOMPARE(value(look), left);
        QCOMPARE(takeNotes(), "out");
        for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Return}) {
            press(key);
            QCOMPARE(takeNotes(), clicked);
        }
    }

    void ringIsForTheKeyboard()
    {
        load("PXNorButton {}");
        const QString ring = "focusedByKeyboard";
        click({20, 20});
        QCOMPARE(value(ring), "false");
        press(Qt::Key_Space);
        QCOMPARE(value(ring), "true");
        click({20, 20});
        value("other.forceActiveFocus()");
        value("forceActiveFocus()");
        QCOMPARE(value(ring), "true");
    }

    void buttonPlacesIconAndLabel_data()
    {
        const Rows<Layout> row;
        row("icon in the middle", {"padOrStretch", "true", "90,22", "true"});
        row("icon stretched", {"padOrStretch", "false", "0,202", "true"});
        row("icon at the left", {"textLeftMargin", "12", "9,22", "true,52"});
        row("no icon", {"textLeftMargin", "-1", "9,22", "false,0"});
    }

    void buttonPlacesIconAndLabel()
    {
        const auto [property, setting, icon, label] = Rows<Layout>::fetch();
        load("PXNorButton { width: 202; height: 40; btText: 'text'; btIcon: 'qrc:/image/mini.png';"
            + property + ':' + setting + '}');
        QCOMPARE(value("[children[0].children[0].x, children[0].children[0].width].join()"), icon);
        if (property == "textLeftMargin")
            QCOMPARE(value("[children[0].visible, children[1].x].join()"), label);
        else
            QCOMPARE(value("children[1].x * 2 + textLength()"), "202"); // in the middle
    }

    void buttonOfPicturesFollowsTheMouse()
    {
        load("PXButton { nomerPic: 'qrc:/image/mini.png'; hoverPic: 'qrc:/image/drop.png' }");
        const QString picture = "__panel.children[0].item.children[0].source.toString()";
        QCOMPARE(value(picture), "qrc:/image/mini.png");
        moveTo({5, 5});
        QCOMPARE(value(picture), "qrc:/image/drop.png");
        moveTo(nowhere);
        QCOMPARE(value(picture), "qrc:/image/mini.png");
    }

    void boxChoosesByMouseAndKeyboard()
    {
        load(R"(PXComboxNew {
            boxheight: 26; popListWdith: 100; popListHeight: 126; positonY: 0
            modelList: ['a', 'b', 'c']; onItemClicked: scene.note('item ' + temp)
            onSendData: scene.note(index + text + checked) })");
        const QString state = "[nowIndex, textForShow, checked].join()";
        const QPoint face(50, 10);
        const QPoint lastRow(50, 88);
        for (int i = 0; i < 2; ++i) { // also the row that is chosen already
            click(face);
            QVERIFY(value(state).endsWith(",true"));
            moveTo(lastRow);
            click(lastRow);
            QCOMPARE(value(state), "2,c,false");
            QCOMPARE(takeNotes(), "item c 2ctrue");
        }
        click(face);
        click(face);
        QCOMPARE(value(state), "2,c,false");

        press(Qt::Key_Down);
        press(Qt::Key_Up);
        QCOMPARE(value(state), "2,c,true");
        press(Qt::Key_Escape);
        QCOMPARE(value(state), "2,c,false");
        for (const Qt::Key key :
            {Qt::Key_Space, Qt::Key_Home, Qt::Key_Down, Qt::Key_Down, Qt::Key_Up, Qt::Key_Return})
            press(key);
        QCOMPARE(value(state), "1,b,false");
        QCOMPARE(takeNotes(), "item b 1btrue");
    }

    void badgeShowsShortTextsAndClosesWithItsFocus()
    {
        load(R"(PXCombox {
            modelList: ['English', 'Deutsch']; modelShowList: ['EN', 'DE']
            onClick: scene.note('click'); onItemClicked: scene.note(temp + textForShow) })");
        const QString state = "[nowIndex, textForShow, checked].join()";
        click({60, 15});
        QCOMPARE(value(state), "0,,true");
        QCOMPARE(takeNotes(), "click");
        value("other.forceActiveFocus()");
        QCOMPARE(value(state), "0,,false");
        value("forceActiveFocus()");
        for (const Qt::Key key : {Qt::Key_Down, Qt::Key_End, Qt::Key_Return})
            press(key);
        QCOMPARE(value(state), "1,DE,false");
        QCOMPARE(takeNotes(), "DeutschDE");
    }

    void oneCheckButtonOfAGroupIsChecked()
    {
        load(R"(Column {
            PXCheckButton { exclusiveGroup: group; onClicked: scene.note('first') }
            PXCheckButton { exclusiveGroup: group; checked: true }
            PXCheckButton {} })");
        const QString checks = "[0, 1, 2].map(function(i) { return children[i].checked }).join()";
        for (int i = 0; i < 2; ++i) {
            click({40, 30});
            QCOMPARE(value(checks), "true,false,false");
            QCOMPARE(takeNotes(), "first");
        }
        click({40, 150});
        QCOMPARE(value(checks), "true,false,true");
        value("children[1].forceActiveFocus()");
        press(Qt::Key_Space);
        QCOMPARE(value(checks), "false,true,true");
    }

    void radioButtonTellsOfTheFirstClick()
    {
        load(R"(Column {
            PXRadioButton { radioText: 'one'; exclusiveGroup: group; onClick: scene.note('one') }
            PXRadioButton { exclusiveGroup: group; checked: true } })");
        const QString checks = "[children[0].checked, children[1].checked].join()";
        click({5, 5});
        QCOMPARE(value(checks), "true,false");
        QCOMPARE(takeNotes(), "one");
        click({5, 5});
        QCOMPARE(value(checks), "true,false");
        QCOMPARE(takeNotes(), "");
        QVERIFY(value("children[0].textLength()").toDouble() > 10);
    }

    void lineEditShowsItsState_data()
    {
        const Rows<Field> row;
        row("empty", {"", false, "b", "false,#666666,hello world"});
        row("focused", {"", true, "a", "true,#58aa64,hello world"});
        row("wrong", {"inputError = true, errorText = 'no'", true, "c", "true,#c84031,no"});
        row("right again",
            {"inputError = true, errorText = 'no', inputError = false", true, "a",
                "true,#58aa64,hello world"});
    }

    void lineEditShowsItsState()
    {
        const auto [state, focused, background, caption] = Rows<Field>::fetch();
        load("PXLineEdit { enterImage: 'a'; exitImge: 'b'; errorImge: 'c' }");
        if (focused)
            click({100, 20});
        value(state);
        QCOMPARE(value("children[0].source"), "qrc:/" + background);
        QCOMPARE(value("[children[1].visible, children[1].color, errorText].join()"), caption);
    }

    void placeholderFadesWithFocusOrText()
    {
        load("PXLineEditNormal {}");
        const QString placeholder = "children[1].opacity";
        QCOMPARE(value(placeholder), "1");
        click({100, 15});
        QTRY_COMPARE(value(placeholder), "0");
        value("other.forceActiveFocus()");
        QTRY_COMPARE(value(placeholder), "1");
        value("text = 'x'");
        QTRY_COMPARE(value(placeholder), "0");
    }

    // The border has round ends, and a text that scrolls would run into them.
    void longTextEndsBeforeTheBorder()
    {
        load("PXLineEditNormal { text: 'a path that is much longer than the field is wide' }");
        value("forceActiveFocus()");
        press(Qt::Key_End);
        QCOMPARE(value("[children[2].clip, children[2].x, width - children[2].width].join()"),
            "true,6,12");
        QCOMPARE(value("children[2].children[0].x + children[2].x"), "0");
    }
};

QTEST_MAIN(TestControls)
#include "tst_controls.moc"
