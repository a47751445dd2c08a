#include "ui/Boxes.h"

#include <QPointer>

namespace
{

/// Runs `box` and takes it away.
int run(QMessageBox* box)
{
    const QPointer<QMessageBox> guard(box);
    box->setTextFormat(Qt::PlainText);
    const int answer = box->exec();
    delete guard;
    return answer;
}

} // namespace

void Boxes::say(QWidget* window, QMessageBox::Icon icon, const QString& title, const QString& text)
{
    run(new QMessageBox(icon, title, text, QMessageBox::Ok, window));
}

bool Boxes::confirm(QWidget* window, const QString& title, const QString& text)
{
    auto* box =
        new QMessageBox(QMessageBox::Question, title, text, QMessageBox::Yes | QMessageBox::No, window);
    box->setDefaultButton(QMessageBox::No);
    return run(box) == QMessageBox::Yes;
}
