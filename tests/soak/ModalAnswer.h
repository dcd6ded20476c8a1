#pragma once

#include <QApplication>
#include <QDialog>
#include <QTimer>

#include <functional>

/// Answers the modal window that comes up on top of the present one, once, while the object lives. What it is not told
/// to answer is rejected.
class ModalAnswer {
public:
    explicit ModalAnswer(std::function<bool(QDialog&)> wanted)
        : answer(std::move(wanted)), below(QApplication::activeModalWidget()) {
        QObject::connect(&timer, &QTimer::timeout, &timer, [this] {
            auto* const window = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (window == nullptr || window == below)
                return;
            if (answered || !answer(*window))
                window->reject();
            answered = true;
        });
        timer.start(1);
    }

private:
    const std::function<bool(QDialog&)> answer;
    QWidget* const below;
    QTimer timer;
    bool answered = false;
};
