// SPDX-License-Identifier: MIT
// The Qt Quick tests of the window (tests/Views/tst_*.qml), on a fake Mac from WindowFixture.
#include "Views/QuenzoUi.h"
#include "WindowFixture.h"

#include <QQmlEngine>
#include <QtQml/QQmlExtensionPlugin>
#include <QtQuickTest>

Q_IMPORT_QML_PLUGIN(QuenzoPlugin)

class Setup : public QObject
{
    Q_OBJECT

public slots:
    void qmlEngineAvailable(QQmlEngine *engine)
    {
        QuenzoUi::prepare(*engine);
        qmlRegisterType<WindowFixture>("QuenzoTest", 1, 0, "WindowFixture");
    }
};

QUICK_TEST_MAIN_WITH_SETUP(window, Setup)

#include "quicktest.moc"
