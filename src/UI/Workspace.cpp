#include "UI/Workspace.h"

#include "Base/RawString.h"
#include "Core/AppState.h"

namespace tessara {

namespace {

QString iconOf(ShapeKind kind)
{
    switch (kind) {
    case ShapeKind::rectangle:
        return QStringLiteral("rectangle-horizontal");
    case ShapeKind::ellipse:
        return QStringLiteral("circle");
    case ShapeKind::triangle:
        return QStringLiteral("triangle");
    case ShapeKind::diamond:
        return QStringLiteral("diamond");
    case ShapeKind::star:
        return QStringLiteral("star");
    case ShapeKind::line:
        return QStringLiteral("minus");
    case ShapeKind::custom:
        return QStringLiteral("line-squiggle");
    }
    Q_UNREACHABLE();
}

} // namespace

Workspace::Workspace(AppState &app)
    : m_app(app)
    , m_entries(*app.document(), *app.runlist())
    , m_heldSelection(*app.document())
    , m_deleteKey(*app.document())
    , m_editor(*app.document())
    , m_output(app)
    , m_presets(app)
    , m_templateFields(*app.document(), app.settings())
    , m_keys(app)
{
    connect(&m_output, &OutputModel::changed, this, &Workspace::isLiveChanged);
    connect(app.document(), &CanvasDocument::sizeChanged, this, &Workspace::canvasSizeChanged);
    connect(&app, &AppState::userTextPresetsChanged, &m_prefetch, qOverload<>(&QTimer::start));
    connect(&m_prefetch, &QTimer::timeout, &app, &AppState::prefetchPresets);
    m_prefetch.setSingleShot(true);
    m_prefetch.start(std::chrono::seconds{2}); // once the window stands
}

UndoStack *Workspace::undoStack() const
{
    return m_app.undoStack();
}

Runlist *Workspace::runlist() const
{
    return m_app.runlist();
}

CanvasDocument *Workspace::document() const
{
    return m_app.document();
}

bool Workspace::isLive() const
{
    return m_app.isDeckLinkOutputRunning();
}

QSizeF Workspace::canvasSize() const
{
    return m_app.document()->size();
}

QVariantList Workspace::shapeKinds() const
{
    QVariantList kinds;
    for (const ShapeKind kind : allCases<ShapeKind>()) {
        if (kind == ShapeKind::custom) // it is drawn on the canvas, point by point
            continue;
        kinds.append(QVariantMap{{QStringLiteral("name"), rawString(kind)},
                                 {QStringLiteral("label"), displayName(kind)},
                                 {QStringLiteral("icon"), iconOf(kind)}});
    }
    return kinds;
}

void Workspace::addTitle()
{
    m_app.document()->addTextLayer();
}

void Workspace::addShape(const QString &kind)
{
    if (const std::optional<ShapeKind> shape = fromRawString<ShapeKind>(kind))
        m_app.document()->addTemplateShapeLayer(*shape);
}

void Workspace::addPicture(const QUrl &url)
{
    const CanvasDocument::AddImageResult added = m_app.document()->addImageLayer(url);
    setPictureError(added ? QString() : text(added.error()));
}

void Workspace::addScoreBar()
{
    m_app.document()->addScoreLayer(ScoreTemplate::wideBroadcast, ScoreSportPreset::football);
}

void Workspace::addCountdown()
{
    m_app.document()->addCountdownLayer();
}

void Workspace::addClock()
{
    m_app.addTimerLayer();
}

void Workspace::noteChoice()
{
    m_deleteKey.chooseSelected();
}

void Workspace::pressDelete()
{
    m_deleteKey.press();
}

void Workspace::showRunlist()
{
    emit runlistRequested();
}

void Workspace::dismissPictureError()
{
    setPictureError({});
}

void Workspace::setPictureError(const QString &error)
{
    if (replaceValue(m_pictureError, error))
        emit pictureErrorChanged();
}

} // namespace tessara
