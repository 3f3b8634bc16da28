#include "UI/WindowFixture.h"

#include "Core/VirtualCardChannel.h"
#include "DeckLink/VirtualCard.h"
#include "UI/presets/PresetThumbnailProvider.h"

#include <QDir>
#include <QTest>

namespace tessara {

namespace {

constexpr int patience = 5000; // ms

// Delegates and popups hang in the tree of items alone, not in that of objects.
QList<QQuickItem *> itemsBelow(const QQuickItem *root)
{
    QList<QQuickItem *> items;
    for (QQuickItem *child : root->childItems())
        items << child << itemsBelow(child);
    return items;
}

QPoint middleOf(const QQuickItem *item)
{
    return item->mapToScene(QPointF(item->width() / 2, item->height() / 2)).toPoint();
}

} // namespace

QString WindowFixture::s_pictures;

WindowFixture::WindowFixture()
{
    prepareVirtualCard(support, CardPace::realTime);
    app = std::make_unique<AppState>(clock, support);
    workspace = std::make_unique<Workspace>(*app);
    engine = std::make_unique<WindowEngine>();
    engine->addImageProvider(QStringLiteral("presets"),
                             new PresetThumbnailProvider(workspace->presets()->thumbnails()));
    document = app->document();
    const bool isShown =
        engine->show(QStringLiteral("MainWindow"),
                     {{QStringLiteral("workspace"), QVariant::fromValue(workspace.get())}});
    EXPECT_TRUE(isShown);
    runlistWindow = std::make_unique<RunlistWindowController>(*engine, *workspace);
    window = qobject_cast<QQuickWindow *>(engine->rootObjects().value(0));
    window->requestActivate();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(window));
    settle();
}

WindowFixture::~WindowFixture()
{
    app->stopDeckLinkOutput();
    if (const auto card = VirtualCard::find())
        card->reset();
    runlistWindow.reset();
    engine.reset();
}

QQuickItem *WindowFixture::item(const QString &name) const
{
    for (QQuickItem *candidate : itemsBelow(window->contentItem())) {
        if (candidate->objectName() == name)
            return candidate;
    }
    ADD_FAILURE() << "no item " << qPrintable(name);
    return nullptr;
}

QList<QQuickItem *> WindowFixture::visibleItems() const
{
    QList<QQuickItem *> items = itemsBelow(window->contentItem());
    items.removeIf([](const QQuickItem *candidate) { return !candidate->isVisible(); });
    return items;
}

QQuickItem *WindowFixture::itemWithText(const QString &text) const
{
    for (QQuickItem *candidate : visibleItems()) {
        if (candidate->property("text").toString() == text)
            return candidate;
    }
    return nullptr;
}

QQuickItem *WindowFixture::inRow(const QString &rowName, const QString &part) const
{
    for (QQuickItem *candidate : visibleItems()) {
        if (candidate->objectName() != part)
            continue;
        const QQuickItem *row = candidate;
        while (row && !row->property("record").isValid())
            row = row->parentItem();
        const auto *record = row ? row->property("record").value<QObject *>() : nullptr;
        if (record && record->property("name").toString() == rowName)
            return candidate;
    }
    ADD_FAILURE() << "no " << qPrintable(part) << " in a row " << qPrintable(rowName);
    return nullptr;
}

QQuickItem *WindowFixture::segment(const QString &label) const
{
    for (QQuickItem *candidate : visibleItems()) {
        if (candidate->inherits("QQuickAbstractButton")
            && candidate->property("text").toString() == label)
            return candidate;
    }
    ADD_FAILURE() << "no segment " << qPrintable(label);
    return nullptr;
}

void WindowFixture::click(QQuickItem *target, Qt::MouseButton button,
                          Qt::KeyboardModifiers modifiers)
{
    ASSERT_TRUE(target);
    ASSERT_TRUE(target->isVisible()) << qPrintable(target->objectName());
    QTest::mouseClick(window, button, modifiers, middleOf(target));
    settle();
}

void WindowFixture::doubleClick(QQuickItem *target)
{
    ASSERT_TRUE(target);
    QTest::mouseDClick(window, Qt::LeftButton, {}, middleOf(target));
    settle();
}

void WindowFixture::dragWithoutRelease(QQuickItem *target, int distance)
{
    ASSERT_TRUE(target);
    const QPoint start = middleOf(target);
    QTest::mousePress(window, Qt::LeftButton, {}, start);
    constexpr int steps = 10;
    for (int step = 1; step <= steps; ++step) {
        m_pointer = start + QPoint(0, distance * step / steps);
        QTest::mouseMove(window, m_pointer);
        QTest::qWait(1);
    }
    settle();
}

void WindowFixture::release()
{
    QTest::mouseRelease(window, Qt::LeftButton, {}, m_pointer);
    settle();
}

void WindowFixture::drag(QQuickItem *target, int distance)
{
    dragWithoutRelease(target, distance);
    release();
}

void WindowFixture::press(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(window, key, modifiers);
    settle();
}

void WindowFixture::hold(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    constexpr int repeats = 5;
    const QString text(QChar(QTest::keyToAscii(key)));
    QTest::simulateEvent(window, true, key, modifiers, text, false);
    for (int repeat = 0; repeat < repeats; ++repeat) {
        QTest::simulateEvent(window, false, key, modifiers, text, true);
        QTest::simulateEvent(window, true, key, modifiers, text, true);
        QTest::qWait(1);
    }
    QTest::simulateEvent(window, false, key, modifiers, text, false);
    settle();
}

void WindowFixture::type(const QString &text)
{
    for (const QChar letter : text)
        QTest::keyClick(window, letter.toLatin1());
    settle();
}

bool WindowFixture::until(const std::function<bool()> &isSo) const
{
    return QTest::qWaitFor(isSo, patience);
}

// Menus and the tool picker open in steps; everything stands when no step is left. In slices, since
// a machine that stands still takes one of them and not all.
void WindowFixture::settle() const
{
    constexpr int longestMotion = 250; // ms
    constexpr int slice = 25;          // ms
    for (int waited = 0; waited < longestMotion; waited += slice)
        QTest::qWait(slice);
}

void WindowFixture::keepPicture(const QString &name) const
{
    if (!s_pictures.isEmpty())
        window->grabWindow().save(QDir(s_pictures).filePath(name + QStringLiteral(".png")));
}

void WindowFixture::openTools()
{
    click(item(QStringLiteral("toolButton")));
}

void WindowFixture::addTitle()
{
    const auto layers = [this] { return document->layerOrder().size(); };
    const auto before = layers();
    openTools();
    EXPECT_TRUE(until([this] { return item(QStringLiteral("tool0"))->isVisible(); }));
    click(item(QStringLiteral("tool0")));
    EXPECT_TRUE(until([&] { return layers() > before; }));
}

QUuid WindowFixture::addTitleNamed(const QString &name)
{
    TextLayer *title = document->addTextLayer();
    title->setName(name);
    return title->id();
}

} // namespace tessara
