// A window of the application, and an operator's hands.
#pragma once

#include <QQuickItem>
#include <QQuickWindow>
#include <QTemporaryDir>

#include "Base/RealClock.h"
#include "Core/AppState.h"
#include "UI/RunlistWindowController.h"
#include "UI/WindowEngine.h"
#include "UI/Workspace.h"

#include <gtest/gtest.h>

namespace tessara {

class WindowFixture : public testing::Test
{
public:
    static void keepPicturesIn(const QString &directory) { s_pictures = directory; }

protected:
    WindowFixture();
    ~WindowFixture() override;

    /// The item of that object name; a test fails that finds none.
    QQuickItem *item(const QString &name) const;
    /// All items below the window that are to be seen.
    QList<QQuickItem *> visibleItems() const;
    QQuickItem *itemWithText(const QString &text) const;
    /// The visible part of the given object name in the row of that name; a test fails that finds
    /// none.
    QQuickItem *inRow(const QString &rowName, const QString &part) const;
    /// The visible button of that text, a segment of a row of them for one; a test fails that finds
    /// none.
    QQuickItem *segment(const QString &label) const;

    void click(QQuickItem *target, Qt::MouseButton button = Qt::LeftButton,
               Qt::KeyboardModifiers modifiers = {});
    void doubleClick(QQuickItem *target);
    /// Presses the left button on the middle, moves straight down in small steps, and lets go.
    void drag(QQuickItem *target, int distance);
    /// The same up to the release.
    void dragWithoutRelease(QQuickItem *target, int distance);
    void release();
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    /// Holds the key until it has repeated some times, as the window system tells it.
    void hold(Qt::Key key, Qt::KeyboardModifiers modifiers = {});
    void type(const QString &text);
    /// Lets the window catch up until `isSo`, at most a few seconds.
    bool until(const std::function<bool()> &isSo) const;
    void settle() const;
    void keepPicture(const QString &name) const;

    void openTools();
    void addTitle();
    /// Not by the tools.
    QUuid addTitleNamed(const QString &name);

    QTemporaryDir data;
    ApplicationSupport support{data.path()};
    RealClock clock;
    std::unique_ptr<AppState> app;
    std::unique_ptr<Workspace> workspace;
    std::unique_ptr<WindowEngine> engine;
    std::unique_ptr<RunlistWindowController> runlistWindow;
    /// The window that the hands are on.
    QQuickWindow *window = nullptr;
    CanvasDocument *document = nullptr;

private:
    static QString s_pictures;
    QPoint m_pointer;
};

} // namespace tessara
