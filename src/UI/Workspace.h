// What the main window works on.
#pragma once

#include "UI/ApplicationKeys.h"
#include "UI/DeleteKey.h"
#include "UI/EntryListModel.h"
#include "UI/HeldSelection.h"
#include "UI/LayerEditor.h"
#include "UI/OutputModel.h"
#include "UI/presets/PresetListModel.h"
#include "UI/presets/TemplateFieldModel.h"

#include <QTimer>
#include <QtQml/qqmlregistration.h>

namespace tessara {

class AppState;
class CanvasDocument;
class Runlist;
class UndoStack;

/// The models of one main window, and the operations of its buttons.
class Workspace : public QObject
{
    Q_OBJECT
    Q_MOC_INCLUDE("Models/CanvasDocument.h")
    Q_MOC_INCLUDE("Models/Runlist.h")
    Q_MOC_INCLUDE("Models/UndoStack.h")
    QML_ELEMENT
    QML_UNCREATABLE("The program makes it")
    Q_PROPERTY(tessara::EntryListModel *entries READ entries CONSTANT FINAL)
    Q_PROPERTY(tessara::HeldSelection *heldSelection READ heldSelection CONSTANT FINAL)
    Q_PROPERTY(tessara::Runlist *runlist READ runlist CONSTANT FINAL)
    Q_PROPERTY(tessara::CanvasDocument *document READ document CONSTANT FINAL)
    Q_PROPERTY(tessara::UndoStack *undoStack READ undoStack CONSTANT FINAL)
    Q_PROPERTY(QObject *editor READ editor CONSTANT FINAL)
    Q_PROPERTY(tessara::OutputModel *output READ output CONSTANT FINAL)
    Q_PROPERTY(tessara::PresetListModel *presets READ presets CONSTANT FINAL)
    Q_PROPERTY(tessara::TemplateFieldModel *templateFields READ templateFields CONSTANT FINAL)
    /// What is shown here is seen by others now.
    Q_PROPERTY(bool isLive READ isLive NOTIFY isLiveChanged FINAL)
    Q_PROPERTY(QSizeF canvasSize READ canvasSize NOTIFY canvasSizeChanged FINAL)
    /// Why the last picture could not be added; empty when it could.
    Q_PROPERTY(QString pictureError READ pictureError NOTIFY pictureErrorChanged FINAL)
    /// The shapes to choose from, as [{name, label, icon}].
    Q_PROPERTY(QVariantList shapeKinds READ shapeKinds CONSTANT FINAL)

public:
    explicit Workspace(AppState &app);

    AppState &app() const { return m_app; }
    EntryListModel *entries() { return &m_entries; }
    HeldSelection *heldSelection() { return &m_heldSelection; }
    Runlist *runlist() const;
    CanvasDocument *document() const;
    UndoStack *undoStack() const;
    QObject *editor() { return &m_editor; }
    OutputModel *output() { return &m_output; }
    PresetListModel *presets() { return &m_presets; }
    TemplateFieldModel *templateFields() { return &m_templateFields; }
    bool isLive() const;
    QSizeF canvasSize() const;
    QString pictureError() const { return m_pictureError; }
    QVariantList shapeKinds() const;

    Q_INVOKABLE void addTitle();
    Q_INVOKABLE void addShape(const QString &kind);
    Q_INVOKABLE void addPicture(const QUrl &url);
    Q_INVOKABLE void addScoreBar();
    Q_INVOKABLE void addCountdown();
    Q_INVOKABLE void addClock();
    /// The operator has clicked on a row, even if it was selected before.
    Q_INVOKABLE void noteChoice();
    Q_INVOKABLE void pressDelete();
    Q_INVOKABLE void dismissPictureError();
    /// Asks for the runlist's window.
    Q_INVOKABLE void showRunlist();

signals:
    void runlistRequested();
    void isLiveChanged();
    void canvasSizeChanged();
    void pictureErrorChanged();

private:
    void setPictureError(const QString &error);

    AppState &m_app;
    EntryListModel m_entries;
    HeldSelection m_heldSelection;
    DeleteKey m_deleteKey;
    LayerEditor m_editor;
    OutputModel m_output;
    PresetListModel m_presets;
    TemplateFieldModel m_templateFields;
    ApplicationKeys m_keys;
    QTimer m_prefetch; // of the presets' pictures
    QString m_pictureError;
};

} // namespace tessara
