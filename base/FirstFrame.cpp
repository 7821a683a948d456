#include "base/FirstFrame.h"

#include <QCoreApplication>
#include <QPointer>
#include <QTimer>

#include <utility>
#include <vector>

namespace FirstFrame {
namespace {

constexpr int longestWait = 300; // milliseconds

struct Task {
    QPointer<const QObject> context;
    std::function<void()> work;
};

struct State {
    bool isExpected = false;
    std::vector<Task> tasks;
};

State &state()
{
    static State current;
    return current;
}

void catchUp()
{
    state().isExpected = false;
    const std::vector<Task> tasks = std::exchange(state().tasks, {});
    for (const Task &task : tasks) {
        if (task.context) {
            task.work();
        }
    }
}

} // namespace

void expect()
{
    state().isExpected = true;
    QTimer::singleShot(longestWait, QCoreApplication::instance(), catchUp);
}

void drawn()
{
    if (state().isExpected) {
        QTimer::singleShot(0, QCoreApplication::instance(), catchUp);
    }
}

void then(const QObject *context, std::function<void()> work)
{
    if (state().isExpected) {
        state().tasks.push_back({context, std::move(work)});
    } else {
        work();
    }
}

} // namespace FirstFrame
