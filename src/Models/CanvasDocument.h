// The one document: all layers of the show, their order, and what is on air.
#pragma once

#include <QHash>
#include <QMap>
#include <QSet>

#include "Models/CanvasDocumentError.h"
#include "Models/CanvasLayerItem.h"
#include "Models/DocumentHooks.h"
#include "Models/DynamicTemplateField.h"
#include "Models/LayerTakes.h"
#include "Models/PresetGroupTakes.h"
#include "Models/Presets/PresetPictures.h"
#include "Models/Presets/TextPreset.h"

#include <tl/expected.hpp>

#include <memory>
#include <tuple>

namespace tessara {

class LayerFactory;

/// Owns the layers. Every change in it or in one of its layers is told by `changed()`, besides the
/// notice of the property itself. An operation on an unknown id does nothing.
class CanvasDocument : public QObject
{
    Q_OBJECT
    /// Canvas units; one is one pixel of the frame.
    Q_PROPERTY(QSizeF size READ size WRITE setSize NOTIFY sizeChanged FINAL)
    Q_PROPERTY(QSizeF canvasSize READ size WRITE setSize NOTIFY sizeChanged FINAL)
    /// Stacking order; the first is back-most.
    Q_PROPERTY(QList<QUuid> layerOrder READ layerOrder NOTIFY layerOrderChanged FINAL)
    Q_PROPERTY(QSet<QUuid> selectedLayerIDs READ selectedLayerIDs WRITE setSelectedLayerIDs NOTIFY
                   selectedLayerIDsChanged FINAL)
    Q_PROPERTY(std::optional<QUuid> selectedLayerID READ selectedLayerID NOTIFY
                   selectedLayerIDsChanged FINAL)
    Q_PROPERTY(std::optional<QUuid> selectedPresetGroupID READ selectedPresetGroupID NOTIFY
                   selectedGroupChanged FINAL)
    Q_PROPERTY(bool canGroupSelection READ canGroupSelection NOTIFY selectedGroupChanged FINAL)
    /// The canvas is collecting points for a free shape.
    TESSARA_OBSERVABLE(bool, isDrawingCustomShape, setIsDrawingCustomShape, false)
    /// What the next take will do to the cued layers: true puts one on air.
    Q_PROPERTY(QMap<QUuid, bool> cueTargets READ cueTargets WRITE setCueTargets NOTIFY
                   cueTargetsChanged FINAL)
    Q_PROPERTY(QMap<QUuid, tessara::LayerRunSettings> layerRunSettings READ layerRunSettings WRITE
                   setLayerRunSettings NOTIFY layerRunSettingsChanged FINAL)
    /// 0 to 1, moved by a running take.
    Q_PROPERTY(QMap<QUuid, double> layerVisibility READ layerVisibility WRITE setLayerVisibility
                   NOTIFY layerVisibilityChanged FINAL)
    /// What the operator fills in, by key; told by `changed()` alone.
    Q_PROPERTY(QList<tessara::DynamicTemplateField> dynamicTemplateFields READ dynamicTemplateFields
                   NOTIFY changed FINAL)
    Q_PROPERTY(QMap<QUuid, QString> presetGroupNames READ presetGroupNames NOTIFY
                   presetGroupsChanged FINAL)

public:
    using AddImageResult = tl::expected<tessara::ImageLayer *, tessara::CanvasDocumentError>;
    using AddPresetResult = tl::expected<std::monostate, tessara::PresetPicturesError>;
    using FieldResult = tl::expected<std::monostate, tessara::CanvasDocumentError>;

    explicit CanvasDocument(Clock &clock, QSizeF size = {1920, 1080});
    ~CanvasDocument() override;

    /// Who hears of takes and changes, in the order of their coming. Not owned.
    void addHooks(DocumentHooks *hooks);
    void removeHooks(DocumentHooks *hooks);

    QSizeF size() const { return m_size; }
    void setSize(QSizeF size);

    // The layers
    /// Back to front.
    QList<CanvasLayerItem> orderedLayers() const;
    std::optional<CanvasLayerItem> layerItem(const QUuid &id) const;
    /// Null for an unknown id.
    Q_INVOKABLE tessara::Layer *layer(const QUuid &id) const;
    template <typename Kind>
    const QList<Kind *> &layersOf() const
    {
        return std::get<QList<Kind *>>(m_layers);
    }
    const QList<QUuid> &layerOrder() const { return m_layerOrder; }
    QRectF layerFrame(const CanvasLayerItem &item) const;
    Q_INVOKABLE QRectF layerFrame(const QUuid &id) const;

    Q_INVOKABLE tessara::TextLayer *addTextLayer();
    Q_INVOKABLE AddImageResult addImageLayer(const QUrl &url);
    Q_INVOKABLE tessara::ShapeLayer *addTemplateShapeLayer(tessara::ShapeKind kind);
    Q_INVOKABLE tessara::ShapeLayer *addCustomShapeLayer(QPointF position, QSizeF size,
                                                         const QList<QPointF> &normalizedPoints);
    Q_INVOKABLE tessara::WebLayer *addWebLayer();
    Q_INVOKABLE tessara::WindowCaptureLayer *addWindowCaptureLayer();
    Q_INVOKABLE tessara::CountdownLayer *addCountdownLayer();
    Q_INVOKABLE tessara::Model3DLayer *addModel3DLayer(const QUrl &url);
    Q_INVOKABLE tessara::ScoreLayer *addScoreLayer(tessara::ScoreTemplate scoreTemplate,
                                                   tessara::ScoreSportPreset sportPreset);
    /// The layer enters front-most, selected and watched; the document owns it.
    void addLayer(const CanvasLayerItem &item);

    /// Null for an unknown id.
    Q_INVOKABLE tessara::Layer *duplicateLayer(const QUuid &id);
    Q_INVOKABLE void removeLayer(const QUuid &id);
    Q_INVOKABLE void removeSelectedLayers();
    Q_INVOKABLE void removePresetGroup(const QUuid &groupID);
    Q_INVOKABLE void moveLayer(const QUuid &id, QPointF point);
    /// The name is trimmed; an empty one changes nothing.
    Q_INVOKABLE void renameLayer(const QUuid &id, const QString &name);
    Q_INVOKABLE void setLayerLocked(const QUuid &id, bool locked);
    Q_INVOKABLE void toggleLayerLocked(const QUuid &id);
    /// Front-most first, as a panel shows them.
    Q_INVOKABLE void reorderLayers(const QList<QUuid> &ids);
    /// Fewer than three points add nothing.
    Q_INVOKABLE void commitCustomShapeDraw(const QList<QPointF> &canvasPoints);
    /// Writes the text of every realtime clock that shows another one.
    Q_INVOKABLE void setRealtimeTimerText(const QString &text);
    /// What is written now is the time, and nothing that the operator did.
    bool isClockWriting() const { return m_isClockWriting; }

    // Selection
    const QSet<QUuid> &selectedLayerIDs() const { return m_selectedLayerIDs; }
    void setSelectedLayerIDs(const QSet<QUuid> &ids);
    /// The back-most of the selected layers.
    std::optional<QUuid> selectedLayerID() const;
    /// The selected layer if it is of the kind, else null.
    template <typename Kind>
    Kind *selectedLayer() const
    {
        const std::optional<QUuid> id = selectedLayerID();
        return id ? find<Kind>(*id) : nullptr;
    }
    Q_INVOKABLE void toggleLayerSelection(const QUuid &id);

    // Groups: the layers that share one id, and a name
    Q_INVOKABLE std::optional<QUuid> presetGroupID(const QUuid &id) const;
    /// Back to front.
    Q_INVOKABLE QList<QUuid> layerIDsInPresetGroup(const QUuid &groupID) const;
    std::optional<QUuid> selectedPresetGroupID() const;
    bool canGroupSelection() const;
    const QMap<QUuid, QString> &presetGroupNames() const { return m_presetGroupNames; }
    Q_INVOKABLE void groupLayers(const QList<QUuid> &ids, const QString &name);
    Q_INVOKABLE void ungroupPreset(const QUuid &groupID);
    Q_INVOKABLE void selectPresetGroup(const QUuid &groupID);

    // Takes; a layer of a group takes its whole group
    Q_INVOKABLE void takeLayerInNow(const QUuid &id);
    Q_INVOKABLE void takeLayerOutNow(const QUuid &id);
    Q_INVOKABLE void takePresetGroupInNow(const QUuid &groupID);
    Q_INVOKABLE void takePresetGroupOutNow(const QUuid &groupID);
    Q_INVOKABLE void toggleLayerInRunlist(const QUuid &id);
    Q_INVOKABLE void togglePresetGroupInRunlist(const QUuid &groupID);
    // The back-most layer's settings stand for the group; a setter writes them into all its layers.
    Q_INVOKABLE tessara::LayerRunSettings presetGroupRunSettings(const QUuid &groupID) const;
    Q_INVOKABLE void setPresetGroupRunTransitionStyle(tessara::LayerRunTransitionStyle style,
                                                      const QUuid &groupID);
    Q_INVOKABLE void setPresetGroupRunDissolveDuration(double seconds, const QUuid &groupID);
    Q_INVOKABLE void setPresetGroupRunAutoOutDuration(double seconds, const QUuid &groupID);
    /// A cut, whatever the layer's settings are.
    Q_INVOKABLE void setLayerHidden(const QUuid &id, bool hidden);
    Q_INVOKABLE void toggleLayerHidden(const QUuid &id);
    Q_INVOKABLE void setRunTransitionStyle(tessara::LayerRunTransitionStyle style, const QUuid &id);
    Q_INVOKABLE void setRunDissolveDuration(double seconds, const QUuid &id);
    Q_INVOKABLE void setRunAutoOutDuration(double seconds, const QUuid &id);
    Q_INVOKABLE double effectiveVisibility(const QUuid &id, bool isHidden) const;
    Q_INVOKABLE QSizeF effectiveTransitionOffset(const QUuid &id, bool isHidden) const;
    /// Part of the take engine: writes `isHidden` and touches nothing else.
    void applyLayerHiddenState(const QUuid &id, bool hidden);

    // Cues; a layer of a group is cued with its whole group
    Q_INVOKABLE void toggleCue(const QUuid &id);
    Q_INVOKABLE void toggleCueForPresetGroup(const QUuid &groupID);
    /// Absent unless all layers of the group are cued to the same state.
    Q_INVOKABLE std::optional<bool> cueTargetForPresetGroup(const QUuid &groupID) const;
    Q_INVOKABLE void clearCueForPresetGroup(const QUuid &groupID);
    /// Takes all cued layers at once, each with its own transition, and ends their cues.
    Q_INVOKABLE void takeCues();

    // Presets
    /// Adds the preset's layers where it says, as a group of its own, on air and selected. Shapes
    /// lie below pictures, and those below text. An error when its pictures are more than a preset
    /// may have; then nothing has changed.
    Q_INVOKABLE AddPresetResult addTextPreset(const tessara::TextPreset &preset);
    /// Decodes the preset's pictures ahead, beside the main thread.
    void prefetchPictures(const TextPreset &preset);
    /// A text that is a score field, in the middle of the canvas.
    Q_INVOKABLE tessara::TextLayer *addScoreTextLayer();

    // Template fields; a key names all layers that carry it. An unknown one does nothing.
    QList<DynamicTemplateField> dynamicTemplateFields() const;
    Q_INVOKABLE void setDynamicTemplateFieldValue(const QString &value, const QString &key);
    /// Adds to the number in the field, down to 0; a text that is no number counts as 0.
    Q_INVOKABLE void adjustDynamicTemplateScore(const QString &key, qint64 delta);
    /// An error when the file is no picture; then no layer has changed.
    Q_INVOKABLE FieldResult replaceDynamicImageField(const QString &key, const QUrl &url);
    Q_INVOKABLE tessara::ImageLayerContentMode dynamicImageContentMode(const QString &key) const;
    Q_INVOKABLE void setDynamicImageContentMode(tessara::ImageLayerContentMode mode,
                                                const QString &key);
    /// By fractions of the picture; only for pictures that fill their frame.
    Q_INVOKABLE void nudgeDynamicImageCrop(const QString &key, double deltaX, double deltaY);
    Q_INVOKABLE void resetDynamicImageCrop(const QString &key);
    /// These go by the field key alone, whatever the layer's name and kind of field.
    Q_INVOKABLE int textLayerCount(const QString &fieldKey) const;
    Q_INVOKABLE void setTextValue(const QString &value, const QString &fieldKey);

    // Macros and history, which speak of a layer by its id and of its values by texts
    /// A key that the layer doesn't have and a value that can't be read change nothing.
    Q_INVOKABLE void applyLayerPropertyMacro(const QUuid &id, const QString &key,
                                             const QString &value);
    /// Adds a layer under a given id; nothing if there is one, if the type is unknown or if the
    /// picture's file can't be loaded.
    Q_INVOKABLE void createLayerFromMacro(const QUuid &layerID, const QString &type,
                                          const QMap<QString, QString> &props);
    /// Takes the one layer as its run settings say, apart from its group; no step is recorded.
    void takeLayerFromMacro(const QUuid &id, bool onAir);
    /// Removes all that belongs to a layer; no history is written.
    void removeLayerCore(const QUuid &id);
    void moveInLayerOrder(const QUuid &id, qsizetype index);
    /// Layers that have gone since are left out, and those that have come stay in front.
    void restoreLayerOrder(const QList<QUuid> &order);

    const QMap<QUuid, bool> &cueTargets() const { return m_cueTargets; }
    const QMap<QUuid, LayerRunSettings> &layerRunSettings() const { return m_takes.runSettings(); }
    /// These replace a map as a whole.
    void setCueTargets(const QMap<QUuid, bool> &targets);
    void setLayerRunSettings(const QMap<QUuid, LayerRunSettings> &settings);
    void setLayerVisibility(const QMap<QUuid, double> &visibility);
    LayerRunSettings runSettings(const QUuid &id) const { return m_takes.runSettings(id); }
    const QMap<QUuid, double> &layerVisibility() const { return m_takes.visibility(); }
    LayerTakes &takes() { return m_takes; }
    const LayerTakes &takes() const { return m_takes; }

signals:
    /// Anything at all has changed, in the document or in one of its layers.
    void changed();
    void sizeChanged();
    void layerAdded(const QUuid &id);
    void layerRemoved(const QUuid &id);
    /// One property of one layer, named by its notice.
    void layerChanged(const QUuid &id);
    void layerOrderChanged();
    void selectedLayerIDsChanged();
    /// The selection has changed, or the groups that its layers may belong to.
    void selectedGroupChanged();
    void cueTargetsChanged();
    void layerRunSettingsChanged();
    void layerVisibilityChanged();
    void visibilityChanged(const QUuid &id);
    void presetGroupsChanged();

private:
    template <typename Kind>
    Kind *find(const QUuid &id) const
    {
        for (Kind *candidate : layersOf<Kind>()) {
            if (candidate->id() == id)
                return candidate;
        }
        return nullptr;
    }
    template <typename Kind>
    Kind *added(Kind *layer)
    {
        addLayer(CanvasLayerItem(layer));
        return layer;
    }
    template <typename Kind>
    qsizetype nextNumber() const
    {
        return layersOf<Kind>().size() + 1;
    }

    LayerFactory factory() const;
    void appendAndSelect(const QUuid &id, bool isHidden);
    void registerLayerObservation(const CanvasLayerItem &item);
    template <typename... Parameters, typename... Arguments>
    void tellHooks(void (DocumentHooks::*notice)(Parameters...), const Arguments &...arguments)
    {
        for (DocumentHooks *hooks : std::as_const(m_hooks))
            (hooks->*notice)(arguments...);
    }
    void removeCue(const QUuid &id);
    void removeCues(const QList<QUuid> &ids);
    void addPresetImageLayer(const PresetImageEntry &entry, const Picture &picture,
                             const QUuid &groupID);
    void applyDefaultRunSettings(const QUuid &groupID, const TextPreset &preset);
    QList<ImageLayer *> imageLayersOfField(const QString &key) const;
    void fillSlot(ImageLayer &layer, const Picture &picture, const QUrl &url);
    QList<TextLayer *> textLayersWithKey(const QString &fieldKey) const;
    void setPresetGroup(const QUuid &id, const std::optional<QUuid> &groupID);
    void forwardOwnNotices();
    Q_SLOT void notifyLayerChanged();
    void takeLayerNow(const QUuid &id, bool onAir);
    void takePresetGroupNow(const QUuid &groupID, bool onAir);
    void requestTake(const QUuid &id, bool onAir, TakeOptions options);

    Clock &m_clock;
    QList<DocumentHooks *> m_hooks;
    QSizeF m_size;
    // In the order in which an id is looked for.
    std::tuple<QList<TextLayer *>, QList<ImageLayer *>, QList<ShapeLayer *>, QList<ScoreLayer *>,
               QList<WebLayer *>, QList<Model3DLayer *>, QList<WindowCaptureLayer *>,
               QList<CountdownLayer *>>
        m_layers;
    QHash<QUuid, CanvasLayerItem> m_itemsByID;
    QList<QUuid> m_layerOrder;
    QSet<QUuid> m_selectedLayerIDs;
    QMap<QUuid, bool> m_cueTargets;
    QMap<QUuid, QString> m_presetGroupNames;
    bool m_isClockWriting = false;
    PresetPictures m_presetPictures;
    PresetGroupTakes m_groupTakes{*this};
    LayerTakes m_takes; // last: its tasks end before what they write
};

} // namespace tessara
