#include "UI/LayerEditor.h"

#include "Base/RawString.h"
#include "Models/TemplateFields.h"
#include "Rendering/DrawnText.h"
#include "UI/KindLook.h"

#include <QMetaProperty>

#include <algorithm>

namespace tessara {

namespace {

// Values as QML speaks of them, and back to what a property holds.

QVariant toQml(const QMetaProperty &property, const QVariant &value)
{
    if (property.isEnumType())
        return QString::fromLatin1(property.enumerator().valueToKey(value.toInt()));
    const QMetaType type = value.metaType();
    if (type == QMetaType::fromType<RGBAColor>())
        return value.value<RGBAColor>().color();
    if (type == QMetaType::fromType<std::optional<double>>()) {
        const auto number = value.value<std::optional<double>>();
        return number ? QVariant(*number) : QVariant();
    }
    if (type == QMetaType::fromType<std::optional<QString>>()) {
        const auto text = value.value<std::optional<QString>>();
        return text ? QVariant(*text) : QVariant();
    }
    if (type == QMetaType::fromType<std::optional<TemplateFieldKind>>()) {
        const auto kind = value.value<std::optional<TemplateFieldKind>>();
        return kind ? QVariant(rawString(*kind)) : QVariant();
    }
    return value;
}

QVariant fromQml(const QMetaProperty &property, const QVariant &input)
{
    const QMetaType type = property.metaType();
    if (property.isEnumType())
        return input.toString(); // QMetaProperty knows the names of its cases
    if (type == QMetaType::fromType<RGBAColor>())
        return QVariant::fromValue(RGBAColor::fromColor(input.value<QColor>()));
    if (type == QMetaType::fromType<std::optional<double>>())
        return QVariant::fromValue(input.isValid() ? std::optional(input.toDouble())
                                                   : std::optional<double>());
    if (type == QMetaType::fromType<std::optional<QString>>())
        return QVariant::fromValue(input.toString().isEmpty() ? std::optional<QString>()
                                                              : std::optional(input.toString()));
    if (type == QMetaType::fromType<std::optional<TemplateFieldKind>>())
        return QVariant::fromValue(fromRawString<TemplateFieldKind>(input.toString()));
    return input;
}

QString noteOn(const QString &text)
{
    return isDrawnWhole(text)
               ? QString()
               : LayerEditor::tr("This text is longer than can be shown: its beginning is "
                                 "drawn, and nothing of it is lost.");
}

} // namespace

LayerEditor::LayerEditor(CanvasDocument &document)
    : QQmlPropertyMap(this, nullptr)
    , m_document(document)
{
    connect(&document, &CanvasDocument::selectedLayerIDsChanged, this, &LayerEditor::follow);
    connect(&document, &CanvasDocument::layerRemoved, this, &LayerEditor::follow);
    connect(&document, &CanvasDocument::presetGroupsChanged, this, &LayerEditor::follow);
    connect(&document, &CanvasDocument::layerRunSettingsChanged, this,
            &LayerEditor::readRunSettings);
    const auto readOwn = [this](const QUuid &id) {
        if (m_document.selectedLayerIDs().contains(id) && (m_layer || m_groupID))
            readAll();
    };
    connect(&document, &CanvasDocument::layerChanged, this, readOwn);
    connect(&document, &CanvasDocument::visibilityChanged, this, [this](const QUuid &id) {
        if (m_document.selectedLayerIDs().contains(id))
            publish(QStringLiteral("isOnAir"), isOnAir());
    });
    follow();
}

void LayerEditor::follow()
{
    const bool isSingle = m_document.selectedLayerIDs().size() == 1;
    const std::optional<QUuid> id = m_document.selectedLayerID();
    Layer *layer = isSingle && id ? m_document.layer(*id) : nullptr;
    const std::optional<QUuid> groupID =
        isSingle ? std::nullopt : m_document.selectedPresetGroupID();
    if (m_layer != layer || m_groupID != groupID)
        leave();
    m_layer = layer;
    m_groupID = groupID;
    publish(QStringLiteral("selectionCount"), m_document.selectedLayerIDs().size());
    publish(QStringLiteral("groupName"), m_groupID ? groupName() : QString());
    readAll();
    readRunSettings();
}

void LayerEditor::leave()
{
    if (m_layer && m_document.layer(m_layer->id()) != m_layer)
        m_layer = nullptr; // what undo may bring back stays as it went
    emit aboutToFollow();
}

void LayerEditor::readAll()
{
    const std::optional<CanvasLayerItem> item =
        m_layer ? m_document.layerItem(m_layer->id()) : std::nullopt;
    if (m_layer && item) {
        const QMetaObject *type = m_layer->metaObject();
        for (int index = QObject::staticMetaObject.propertyCount(); index < type->propertyCount();
             ++index) {
            const QMetaProperty property = type->property(index);
            publish(QLatin1String(property.name()), toQml(property, property.read(m_layer)));
        }
        if (const auto *aspect = qobject_cast<AspectLockedLayer *>(m_layer.data()))
            publish(QStringLiteral("aspectRatioLocked"), aspect->isAspectRatioLocked());
        if (const auto *text = qobject_cast<TextLayer *>(m_layer.data()))
            publish(QStringLiteral("textNote"), noteOn(text->text()));
    }
    publish(QStringLiteral("isOnAir"), isOnAir());
    publish(QStringLiteral("typeIcon"), item        ? lookOf(*item).icon
                                        : m_groupID ? QStringLiteral("group")
                                                    : QString());
    publish(QStringLiteral("kindName"), item        ? kindName(*item)
                                        : m_groupID ? QStringLiteral("group")
                                                    : QString());
}

void LayerEditor::readRunSettings()
{
    const LayerRunSettings settings = m_layer     ? m_document.runSettings(m_layer->id())
                                      : m_groupID ? m_document.presetGroupRunSettings(*m_groupID)
                                                  : LayerRunSettings{};
    publish(QStringLiteral("transitionStyle"), rawString(settings.transitionStyle));
    publish(QStringLiteral("dissolveDuration"), settings.dissolveDuration);
    publish(QStringLiteral("autoOutDuration"), settings.autoOutDuration);
}

void LayerEditor::publish(const QString &key, const QVariant &value)
{
    if (!contains(key) || this->value(key) != value)
        insert(key, value);
}

QVariant LayerEditor::updateValue(const QString &key, const QVariant &input)
{
    if ((m_layer || m_groupID) && writeRunSetting(key, input))
        return value(key);
    if (!m_layer)
        return value(key);
    const QMetaObject *type = m_layer->metaObject();
    const QMetaProperty property =
        type->property(type->indexOfProperty(key.toLatin1().constData()));
    if (!property.isValid() || !property.isWritable())
        return value(key);
    if (key == QStringLiteral("name"))
        m_document.renameLayer(m_layer->id(), input.toString());
    else
        property.write(m_layer, fromQml(property, input));
    return m_layer ? toQml(property, property.read(m_layer)) : input;
}

bool LayerEditor::writeRunSetting(const QString &key, const QVariant &input)
{
    if (key == QStringLiteral("transitionStyle")) {
        if (const auto style = fromRawString<LayerRunTransitionStyle>(input.toString()))
            m_layer ? m_document.setRunTransitionStyle(*style, m_layer->id())
                    : m_document.setPresetGroupRunTransitionStyle(*style, *m_groupID);
    } else if (key == QStringLiteral("dissolveDuration")) {
        m_layer ? m_document.setRunDissolveDuration(input.toDouble(), m_layer->id())
                : m_document.setPresetGroupRunDissolveDuration(input.toDouble(), *m_groupID);
    } else if (key == QStringLiteral("autoOutDuration")) {
        m_layer ? m_document.setRunAutoOutDuration(input.toDouble(), m_layer->id())
                : m_document.setPresetGroupRunAutoOutDuration(input.toDouble(), *m_groupID);
    } else {
        return false;
    }
    return true;
}

QString LayerEditor::groupName() const
{
    return m_document.presetGroupNames().value(*m_groupID, QStringLiteral("Preset Group"));
}

bool LayerEditor::isOnAir() const
{
    const QSet<QUuid> &ids = m_document.selectedLayerIDs();
    return (m_layer || m_groupID) && std::any_of(ids.begin(), ids.end(), [this](const QUuid &id) {
               return m_document.takes().isOnAir(id);
           });
}

void LayerEditor::ungroup()
{
    if (m_groupID)
        m_document.ungroupPreset(*m_groupID);
}

void LayerEditor::removeGroup()
{
    if (m_groupID)
        m_document.removePresetGroup(*m_groupID);
}

void LayerEditor::applySportPreset()
{
    if (auto *score = qobject_cast<ScoreLayer *>(m_layer.data()))
        score->applySportPreset();
}

void LayerEditor::setDynamicField(bool isField)
{
    auto *text = qobject_cast<TextLayer *>(m_layer.data());
    if (!text)
        return;
    if (!isField) {
        text->setFieldKind(std::nullopt);
        text->setFieldKey(std::nullopt);
        return;
    }
    if (!text->fieldKind())
        text->setFieldKind(TemplateFieldKind::text);
    if (text->fieldKey().value_or(QString()).isEmpty())
        text->setFieldKey(
            normalizedFieldKey(text->name().isEmpty() ? QStringLiteral("field") : text->name()));
}

void LayerEditor::setFieldKey(const QString &typed)
{
    if (auto *text = qobject_cast<TextLayer *>(m_layer.data()))
        text->setFieldKey(normalizedFieldKey(typed));
}

CountdownLayer *LayerEditor::countdown() const
{
    return qobject_cast<CountdownLayer *>(m_layer.data());
}

void LayerEditor::startCountdown()
{
    if (CountdownLayer *layer = countdown())
        layer->start();
}

void LayerEditor::pauseCountdown()
{
    if (CountdownLayer *layer = countdown())
        layer->pause();
}

void LayerEditor::resetCountdown()
{
    if (CountdownLayer *layer = countdown()) {
        layer->pause();
        layer->setRemainingSeconds(layer->totalSeconds());
    }
}

void LayerEditor::setCountdownTime(double seconds)
{
    if (CountdownLayer *layer = countdown()) {
        layer->pause();
        layer->setTotalSeconds(std::max(seconds, 0.0));
        layer->setRemainingSeconds(layer->totalSeconds());
    }
}

void LayerEditor::setPosition(double x, double y)
{
    if (m_layer)
        m_document.moveLayer(m_layer->id(), {x, y});
}

double LayerEditor::keptRatio() const
{
    const auto *aspect = qobject_cast<AspectLockedLayer *>(m_layer.data());
    return aspect && aspect->isAspectRatioLocked() ? aspect->lockedAspectRatio() : 0;
}

void LayerEditor::setSize(QSizeF size)
{
    if (auto *layer = qobject_cast<SizedLayer *>(m_layer.data()))
        layer->setSize(size.expandedTo({1, 1}));
}

void LayerEditor::setWidth(double width)
{
    const auto *layer = qobject_cast<SizedLayer *>(m_layer.data());
    const double ratio = keptRatio();
    if (layer)
        setSize({width, ratio > 0 ? width / ratio : layer->size().height()});
}

void LayerEditor::setHeight(double height)
{
    const auto *layer = qobject_cast<SizedLayer *>(m_layer.data());
    const double ratio = keptRatio();
    if (layer)
        setSize({ratio > 0 ? height * ratio : layer->size().width(), height});
}

void LayerEditor::setAspectRatioLocked(bool locked)
{
    if (auto *layer = qobject_cast<AspectLockedLayer *>(m_layer.data()))
        layer->setAspectRatioLocked(locked);
}

} // namespace tessara
