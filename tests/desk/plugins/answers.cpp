// SPDX-License-Identifier: MIT
// A plug-in of Qt itself, which is loaded before the program's own code runs: answers the program's
// message boxes with the button whose text the environment variable DESK_TEST_ANSWER has.
#include "callrecord.h"

#include <QtCore/QTimer>
#include <QtGui/QGenericPlugin>
#include <QtWidgets/QAbstractButton>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMessageBox>

class Answers final : public QGenericPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "answers.json")

public:
    QObject* create(const QString& /*name*/, const QString& /*parameters*/) override
    {
        auto* const timer = new QTimer;
        connect(timer, &QTimer::timeout, timer, &Answers::answer);
        timer->start(1);
        return timer;
    }

private:
    static void answer()
    {
        auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box || !box->isVisible())
            return;
        const QList<QAbstractButton*> buttons = box->buttons();
        for (QAbstractButton* const button : buttons) {
            if (button->text() != qEnvironmentVariable("DESK_TEST_ANSWER"))
                continue;
            desktest::recordCall(QStringLiteral("ANSWERS.") + box->windowTitle());
            button->click();
            return;
        }
    }
};

#include "answers.moc"
