// The fields of the document's templates, as the operator fills them in.
#pragma once

#include <QAbstractListModel>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

#include "Models/DynamicTemplateField.h"
#include "UI/Throttle.h"

namespace tessara {

class CanvasDocument;
class Settings;

/// One row a field, by its key. A row is changed in place, so that the one that is being typed in
/// stays; changes that come from elsewhere are told as often as an eye can follow, and one's own at
/// once.
class TemplateFieldModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ANONYMOUS
    Q_PROPERTY(int count READ count NOTIFY countChanged FINAL)
    /// Unfolded; remembered from session to session.
    Q_PROPERTY(bool isOpen READ isOpen WRITE setIsOpen NOTIFY isOpenChanged FINAL)

public:
    enum Role { KeyRole = Qt::UserRole + 1, KindRole, ValueRole, ContentModeRole };
    static const QString isOpenKey; // in the settings

    /// Both outlive the model.
    TemplateFieldModel(CanvasDocument &document, Settings &settings);

    int count() const { return int(m_rows.size()); }
    bool isOpen() const { return m_isOpen; }
    void setIsOpen(bool isOpen);

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    Q_INVOKABLE void setText(const QString &key, const QString &text);
    Q_INVOKABLE void adjustScore(const QString &key, int delta);
    /// A file that is no picture changes nothing.
    Q_INVOKABLE void chooseImage(const QString &key, const QUrl &file);
    /// By the name of its case.
    Q_INVOKABLE void setContentMode(const QString &key, const QString &mode);
    /// In steps to the right and down.
    Q_INVOKABLE void nudgeCrop(const QString &key, int stepsX, int stepsY);
    Q_INVOKABLE void resetCrop(const QString &key);

signals:
    void countChanged();
    /// What was begun for it ends.
    void fieldRemoved(const QString &key);
    void isOpenChanged();

private:
    struct Row
    {
        DynamicTemplateField field;
        ImageLayerContentMode contentMode = ImageLayerContentMode::fitInside;

        bool operator==(const Row &) const = default;
    };

    QList<Row> wantedRows() const;
    void follow();
    void removeMissing(const QList<Row> &wanted);

    CanvasDocument &m_document;
    Settings &m_settings;
    bool m_isOpen;
    QList<Row> m_rows; // sorted by key, as the document has them
    Throttle m_following;
};

} // namespace tessara
