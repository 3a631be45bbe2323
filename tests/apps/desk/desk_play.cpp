#include "tests/apps/desk/desk_play.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QTest>
#include <QTimer>
#include <cstdlib>

#include "host/ed/document.h"
#include "host/os/registry.h"

namespace desktest {
namespace {

QApplication& application() {
    static int count = 1;
    static char name[] = "desk";
    static char* words[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static auto* one = new QApplication(count, words);
    return *one;
}

} // namespace

DeskTest::DeskTest() {
    application();
    std::string pattern = (std::filesystem::temp_directory_path() / "deskXXXXXX").string();
    folder_ = mkdtemp(pattern.data());
    setenv("CORVANE_HOME", (folder_ / "home").c_str(), 1);
    setenv("CORVANE_MODULE", CORVANE_MODULE_FILE, 1);
    host::setUserRegistry((folder_ / "home/settings.ini").string());
    desk_ = std::make_unique<desk::Desk>();
    desk_->window().resize(1000, 800);
    desk_->window().show();
}

DeskTest::~DeskTest() {
    desk_.reset();
    std::filesystem::remove_all(folder_);
}

void DeskTest::play(std::vector<std::function<void()>> steps, const std::string& drawing) {
    ASSERT_TRUE(desk_->start(drawing, "en"));
    steps_ = std::move(steps);
    done_ = 0;
    QTimer::singleShot(0, &desk_->window(), [this] { next(); });
    desk_->run();
    EXPECT_EQ(done_, steps_.size());
}

void DeskTest::next() {
    if (pause_ > 0) return QTimer::singleShot(std::exchange(pause_, 0), &desk_->window(), [this] { next(); });
    if (done_ == steps_.size()) {
        desk_->discard();
        desk_->window().close();
        return;
    }
    // Before the step: one that runs a command comes back when the desk waits again.
    QTimer::singleShot(5, &desk_->window(), [this] { next(); });
    steps_[done_++]();
}

std::function<void()> DeskTest::type(const QString& line) {
    return [this, line] {
        QLineEdit* input = desk_->window().commandLine().input();
        QTest::keyClicks(input, line);
        QTest::keyClick(input, Qt::Key_Return);
    };
}

std::function<void()> DeskTest::press(Qt::Key key) {
    return [this, key] { QTest::keyClick(&canvas(), key); };
}

std::function<void()> DeskTest::click(double x, double y, Qt::KeyboardModifiers held) {
    return [this, x, y, held] { QTest::mouseClick(&canvas(), Qt::LeftButton, held, pixel(x, y)); };
}

std::function<void()> DeskTest::drag(double x, double y, double toX, double toY) {
    return [this, x, y, toX, toY] {
        QTest::mousePress(&canvas(), Qt::LeftButton, {}, pixel(x, y));
        QTest::mouseMove(&canvas(), pixel(toX, toY));
        QTest::mouseRelease(&canvas(), Qt::LeftButton, {}, pixel(toX, toY));
    };
}

std::function<void()> DeskTest::pause(int milliseconds) {
    return [this, milliseconds] { pause_ = milliseconds; };
}

std::function<void()> DeskTest::trigger(const QString& action) {
    return [this, action] { desk_->window().action(action)->trigger(); };
}

std::function<void()> DeskTest::pressInBox(const QString& button) {
    return [button] { pressButton(button); };
}

void DeskTest::pressButton(const QString& text) {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    ASSERT_TRUE(box) << "no question stands for " << text.toStdString();
    for (QAbstractButton* button : box->buttons())
        if (QString(button->text()).remove('&') == text) return QTest::mouseClick(button, Qt::LeftButton);
    FAIL() << "no button " << text.toStdString();
}

QPoint DeskTest::pixel(double x, double y) const {
    AcGePoint2d p;
    EXPECT_TRUE(desk_->window().canvas().map().toScreen({x, y, 0}, p));
    return {int(std::lround(p.x)), int(std::lround(p.y))};
}

AcDbDatabase& DeskTest::drawing() { return *curDoc()->database(); }

std::vector<AcDbObjectId> DeskTest::entities() {
    std::vector<AcDbObjectId> present;
    AcDbObjectPointer<AcDbBlockTableRecord> space(drawing().modelSpaceId(), AcDb::kForRead);
    for (const AcDbObjectId id : space->entities())
        if (!id.isErased()) present.push_back(id);
    return present;
}

} // namespace desktest
