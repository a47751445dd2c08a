#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <functional>
#include <utility>

namespace Support
{

/// Answers the next dialog or menu of class `Widget` that some call opens and waits for. Made before that
/// call; a dialog that nobody closes is closed after a while, so that no test hangs.
///
///     Support::Answer<QMessageBox> no([](QMessageBox& box) { box.button(QMessageBox::No)->click(); });
///     window.onResetProjectClicked();
///     QVERIFY(no.given());
template <class Widget>
class Answer
{
public: // construction
    explicit Answer(std::function<void(Widget&)> act)
        : m_act(std::move(act))
    {
        m_age.start();
        QObject::connect(&m_poll, &QTimer::timeout, &m_poll, [this] { look(); });
        m_poll.start(POLL_INTERVAL);
    }

public: // queries
    /// Whether the dialog came, was answered and went without the watchdog's help.
    [[nodiscard]] bool given() const
    {
        return m_answered && !m_forced;
    }

private:                                    // helpers
    static constexpr int POLL_INTERVAL = 2; // [ms]
    static constexpr int PATIENCE = 10'000; // [ms]

    static QWidget* waiting()
    {
        QWidget* popup = QApplication::activePopupWidget();
        return popup != nullptr ? popup : QApplication::activeModalWidget();
    }

    void look()
    {
        QWidget* open = waiting();
        if (open == nullptr || !open->isVisible())
            return;
        auto* wanted = qobject_cast<Widget*>(open);
        if (wanted != nullptr && !m_answered) {
            m_answered = true;
            m_age.restart();
            m_act(*wanted);
        } else if (m_age.elapsed() > PATIENCE) {
            m_forced = true;
            open->close();
        }
    }

private: // data
    std::function<void(Widget&)> m_act;
    QTimer m_poll;
    QElapsedTimer m_age;
    bool m_answered = false;
    bool m_forced = false;
};

/// Presses the button `which` of the next message box and keeps what the box said.
class BoxAnswer
{
public: // construction
    explicit BoxAnswer(QMessageBox::StandardButton which)
        : m_answer([this, which](QMessageBox& box) { read(box, which); })
    {
    }

public: // queries
    [[nodiscard]] bool given() const
    {
        return m_answer.given();
    }

public: // what the box was
    QString title;
    QString text;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    QMessageBox::StandardButtons buttons;
    QMessageBox::StandardButton defaultButton = QMessageBox::NoButton;
    Qt::TextFormat format = Qt::AutoText;
    QPointer<QWidget> parent;

private: // helpers
    void read(QMessageBox& box, QMessageBox::StandardButton which)
    {
        title = box.windowTitle();
        text = box.text();
        icon = box.icon();
        buttons = box.standardButtons();
        defaultButton = box.standardButton(box.defaultButton());
        format = box.textFormat();
        parent = box.parentWidget();
        if (which == QMessageBox::NoButton)
            box.close();
        else
            box.button(which)->click();
    }

private: // data
    Answer<QMessageBox> m_answer;
};

/// Chooses the entry `text` of the next menu, or closes it where `text` is empty; keeps all entries.
class MenuAnswer
{
public: // construction
    explicit MenuAnswer(QString text = {})
        : m_text(std::move(text))
        , m_answer([this](QMenu& menu) { choose(menu); })
    {
    }

public: // queries
    [[nodiscard]] bool given() const
    {
        return m_answer.given();
    }

public: // what the menu offered
    QStringList entries;

private: // helpers
    void choose(QMenu& menu)
    {
        QAction* chosen = nullptr;
        const QList<QAction*> actions = menu.actions();
        for (QAction* action : actions) {
            entries.append(action->text());
            if (action->text() == m_text)
                chosen = action;
        }
        if (chosen == nullptr) {
            menu.close();
            return;
        }
        menu.setActiveAction(chosen);
        QTest::keyClick(&menu, Qt::Key_Return);
    }

private: // data
    QString m_text;
    Answer<QMenu> m_answer;
};

/// Chooses `path` in the next file dialog, and keeps what the dialog looked like.
class FileAnswer
{
public: // construction
    explicit FileAnswer(QString path)
        : m_path(std::move(path))
        , m_answer([this](QFileDialog& dialog) { choose(dialog); })
    {
    }

public: // queries
    [[nodiscard]] bool given() const
    {
        return m_answer.given();
    }

public: // what the dialog was
    QString title;
    QStringList filters;
    QFileDialog::AcceptMode mode = QFileDialog::AcceptOpen;
    QString offered; ///< in the field of the file's name

private: // helpers
    void choose(QFileDialog& dialog)
    {
        title = dialog.windowTitle();
        filters = dialog.nameFilters();
        mode = dialog.acceptMode();
        if (m_path.isEmpty()) {
            dialog.reject();
            return;
        }
        auto* name = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        offered = name->text();
        name->setText(m_path);
        QMetaObject::invokeMethod(&dialog, "accept", Qt::QueuedConnection);
    }

private: // data
    QString m_path;
    Answer<QFileDialog> m_answer;
};

} // namespace Support
