// A desk without a screen, and steps of a user's hand that are done one after the other while it runs.
#pragma once
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <vector>

#include "apps/desk/desk.h"

namespace desktest {

class DeskTest : public testing::Test {
protected:
    DeskTest();
    ~DeskTest() override;

    // Each step is done when the desk waits for an answer; behind the last one the window is closed, changes
    // thrown away.
    void play(std::vector<std::function<void()>> steps, const std::string& drawing = {});

    // Steps.
    std::function<void()> type(const QString& line); // with Enter, key by key
    std::function<void()> press(Qt::Key key);
    std::function<void()> click(double x, double y, Qt::KeyboardModifiers held = {}); // world coordinates
    std::function<void()> drag(double x, double y, double toX, double toY);
    std::function<void()> pause(int milliseconds = 50);      // before the next step
    std::function<void()> trigger(const QString& action);    // of the window, by its name
    std::function<void()> pressInBox(const QString& button); // of the question that stands, by its text

    static void pressButton(const QString& text);
    QPoint pixel(double x, double y) const;
    desk::Canvas& canvas() { return desk_->window().canvas(); }
    QString transcript() { return desk_->window().commandLine().transcript(); }
    AcDbDatabase& drawing();
    std::vector<AcDbObjectId> entities();
    std::filesystem::path folder() const { return folder_; }

    std::unique_ptr<desk::Desk> desk_;

private:
    void next();
    std::filesystem::path folder_;
    std::vector<std::function<void()>> steps_;
    size_t done_ = 0;
    int pause_ = 0;
};

} // namespace desktest
