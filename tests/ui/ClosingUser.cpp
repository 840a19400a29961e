#include <QApplication>
#include <QGenericPlugin>
#include <QPushButton>
#include <QTest>
#include <QTimer>

/// A user inside the real program: Qt loads this plugin into it, and it closes the main window and
/// answers the question with a click.
class ClosingUser final : public QObject {
    Q_OBJECT

public:
    ClosingUser()
    {
        startTimer(50);
        QTimer::singleShot(0, this, &ClosingUser::closeWindow);
    }

protected:
    void timerEvent(QTimerEvent*) override
    {
        QWidget* dialog = QApplication::activeModalWidget();
        if (auto* button = dialog ? dialog->findChild<QPushButton*>("btnExit") : nullptr)
            QTest::mouseClick(button, Qt::LeftButton);
    }

private:
    void closeWindow()
    {
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            if (widget->objectName() == "tavixClass" && widget->isVisible()) {
                widget->close();
                return;
            }
        }
        QTimer::singleShot(50, this, &ClosingUser::closeWindow); // it is not there yet
    }
};

class ClosingUserPlugin final : public QGenericPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "closingUser.json")

public:
    QObject* create(const QString&, const QString&) override { return new ClosingUser; }
};

#include "ClosingUser.moc"
