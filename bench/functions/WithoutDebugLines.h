#pragma once

#include <QLoggingCategory>

// Nobody listens to debug lines while it lives, as in a program that was started by its launcher.
class WithoutDebugLines {
public:
    WithoutDebugLines() { listen(false); }
    ~WithoutDebugLines() { listen(true); }
    Q_DISABLE_COPY(WithoutDebugLines)

private:
    static void listen(bool isOn)
    {
        QLoggingCategory::defaultCategory()->setEnabled(QtDebugMsg, isOn);
    }
};
