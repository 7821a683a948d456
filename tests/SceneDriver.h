#pragma once

#include <QQuickItem>
#include <QQuickView>
#include <QtTest>

// Finds what is in a scene by its object name, and uses it as a user does.
class SceneDriver {
public:
    explicit SceneDriver(QQuickView *scene)
        : view(scene)
    {
    }

    // The item and all below it, that one last.
    static QList<QQuickItem *> itemsOf(QQuickItem *top)
    {
        QList<QQuickItem *> items;
        for (QQuickItem *child : top->childItems())
            items << itemsOf(child);
        return items << top;
    }

    static QList<QQuickItem *> shownTexts(QQuickItem *top)
    {
        QList<QQuickItem *> texts;
        for (QQuickItem *item : itemsOf(top))
            if (item->inherits("QQuickText") && item->isVisible() && item->property("text") != "")
                texts << item;
        return texts;
    }

    static QRectF placeOf(const QQuickItem *item)
    {
        return item->mapRectToScene(item->boundingRect());
    }

    QQuickItem *root() const { return view->rootObject(); }

    QQuickItem *item(const QString &name) const // null while it is not there
    {
        QQuickItem *found = nullptr;
        for (QQuickItem *candidate : itemsOf(root()))
            found = candidate->objectName() == name ? candidate : found;
        return found;
    }

    QVariant get(const QString &name, const char *property) const
    {
        return item(name)->property(property);
    }

    bool isShown(const QString &name) const { return item(name)->isVisible(); }

    QString focusedName() const
    {
        const QQuickItem *focused = view->activeFocusItem();
        while (focused && focused->objectName().isEmpty())
            focused = focused->parentItem();
        return focused ? focused->objectName() : QString();
    }

    void key(Qt::Key code, Qt::KeyboardModifiers modifiers = {}) const
    {
        QTest::keyClick(view, code, modifiers);
    }

    void press(QPointF at) const { QTest::mousePress(view, Qt::LeftButton, {}, at.toPoint()); }
    void click(QPointF at) const { QTest::mouseClick(view, Qt::LeftButton, {}, at.toPoint()); }
    void click(const QString &name) const { click(placeOf(item(name)).center()); }

    void clickBesideEverything() const { click(QPointF(320, 110)); }

    void goToByTab(const QString &name) const
    {
        constexpr int controls = 12; // at most on one page
        for (int i = 0; i < controls && focusedName() != name; ++i)
            key(Qt::Key_Tab);
        QCOMPARE(focusedName(), name);
    }

    void type(const QString &text) const // instead of what is in the field
    {
        key(Qt::Key_A, Qt::ControlModifier);
        key(Qt::Key_Delete);
        for (const char letter : text.toLatin1())
            QTest::keyClick(view, letter);
    }

private:
    QQuickView *view;
};
