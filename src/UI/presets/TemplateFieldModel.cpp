#include "UI/presets/TemplateFieldModel.h"

#include "Base/RawString.h"
#include "Base/Settings.h"
#include "Models/CanvasDocument.h"

namespace tessara {

const QString TemplateFieldModel::isOpenKey = QStringLiteral("templateFieldsOpen");

TemplateFieldModel::TemplateFieldModel(CanvasDocument &document, Settings &settings)
    : m_document(document)
    , m_settings(settings)
    , m_isOpen(settings.value(isOpenKey).toBool(true))
{
    connect(&document, &CanvasDocument::changed, &m_following, &Throttle::request);
    connect(&m_following, &Throttle::due, this, &TemplateFieldModel::follow);
    follow();
}

void TemplateFieldModel::setIsOpen(bool isOpen)
{
    if (!replaceValue(m_isOpen, isOpen))
        return;
    if (const auto stored = m_settings.setValue(isOpenKey, isOpen); !stored)
        qWarning("%s", qPrintable(stored.error()));
    emit isOpenChanged();
}

int TemplateFieldModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant TemplateFieldModel::data(const QModelIndex &index, int role) const
{
    if (index.row() < 0 || index.row() >= count())
        return {};
    const Row &row = m_rows[index.row()];
    switch (role) {
    case KeyRole:
        return row.field.key;
    case KindRole:
        return rawString(row.field.kind);
    case ValueRole:
        return row.field.value;
    case ContentModeRole:
        return rawString(row.contentMode);
    }
    return {};
}

QHash<int, QByteArray> TemplateFieldModel::roleNames() const
{
    return {{KeyRole, "fieldKey"},
            {KindRole, "fieldKind"},
            {ValueRole, "fieldValue"},
            {ContentModeRole, "contentMode"}};
}

void TemplateFieldModel::setText(const QString &key, const QString &text)
{
    m_document.setDynamicTemplateFieldValue(text, key);
    follow();
}

void TemplateFieldModel::adjustScore(const QString &key, int delta)
{
    m_document.adjustDynamicTemplateScore(key, delta);
    follow();
}

void TemplateFieldModel::chooseImage(const QString &key, const QUrl &file)
{
    if (m_document.replaceDynamicImageField(key, file))
        follow();
}

void TemplateFieldModel::setContentMode(const QString &key, const QString &mode)
{
    if (const auto known = fromRawString<ImageLayerContentMode>(mode))
        m_document.setDynamicImageContentMode(*known, key);
    follow();
}

void TemplateFieldModel::nudgeCrop(const QString &key, int stepsX, int stepsY)
{
    constexpr double step = 0.04; // of the picture
    m_document.nudgeDynamicImageCrop(key, stepsX * step, stepsY * step);
}

void TemplateFieldModel::resetCrop(const QString &key)
{
    m_document.resetDynamicImageCrop(key);
}

QList<TemplateFieldModel::Row> TemplateFieldModel::wantedRows() const
{
    QList<Row> rows;
    for (const DynamicTemplateField &field : m_document.dynamicTemplateFields()) {
        Row row{field, {}};
        if (field.kind == TemplateFieldKind::image)
            row.contentMode = m_document.dynamicImageContentMode(field.key);
        rows.append(row);
    }
    return rows;
}

void TemplateFieldModel::follow()
{
    m_following.satisfy();
    const QList<Row> wanted = wantedRows();
    const int before = count();
    removeMissing(wanted);
    for (int at = 0; at < int(wanted.size()); ++at) {
        if (at >= count() || m_rows[at].field.key != wanted[at].field.key) {
            beginInsertRows({}, at, at);
            m_rows.insert(at, wanted[at]);
            endInsertRows();
        } else if (replaceValue(m_rows[at], wanted[at])) {
            emit dataChanged(index(at), index(at));
        }
    }
    if (count() != before)
        emit countChanged();
}

void TemplateFieldModel::removeMissing(const QList<Row> &wanted)
{
    QSet<QString> stay;
    for (const Row &row : wanted)
        stay.insert(row.field.key);
    for (int at = count() - 1; at >= 0; --at) {
        if (stay.contains(m_rows[at].field.key))
            continue;
        beginRemoveRows({}, at, at);
        const QString key = m_rows.takeAt(at).field.key;
        endRemoveRows();
        emit fieldRemoved(key);
    }
}

} // namespace tessara
