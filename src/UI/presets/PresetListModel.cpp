#include "UI/presets/PresetListModel.h"

#include "Core/AppState.h"

#include <QSet>

#include <algorithm>

namespace tessara {

PresetListModel::PresetListModel(AppState &app)
    : m_app(app)
{
}

void PresetListModel::setTab(const QString &tab)
{
    if (!replaceValue(m_tab, tab))
        return;
    showWanted();
    emit tabChanged();
}

void PresetListModel::setSearch(const QString &search)
{
    if (!replaceValue(m_search, search))
        return;
    showWanted();
    emit searchChanged();
}

int PresetListModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : count();
}

QVariant PresetListModel::data(const QModelIndex &index, int role) const
{
    if (index.row() < 0 || index.row() >= count())
        return {};
    const Row &row = m_rows[index.row()];
    switch (role) {
    case NameRole:
        return row.preset.name;
    case ThumbnailRole:
        return QStringLiteral("image://presets/%1").arg(row.number);
    }
    return {};
}

QHash<int, QByteArray> PresetListModel::roleNames() const
{
    return {{NameRole, "presetName"}, {ThumbnailRole, "thumbnail"}};
}

void PresetListModel::refresh()
{
    if (!m_isFollowing)
        connect(&m_app, &AppState::userTextPresetsChanged, this, &PresetListModel::refresh);
    m_isFollowing = true;
    m_mine = m_app.visibleUserTextPresets();
    m_system = m_app.systemPresets();
    m_thumbnails->setPresets(m_mine + m_system);
    showWanted();
    emit presetsChanged();
}

void PresetListModel::prepare(int row)
{
    if (row >= 0 && row < count())
        m_app.document()->prefetchPictures(m_rows[row].preset);
}

void PresetListModel::apply(int row)
{
    if (row >= 0 && row < count())
        m_app.applyPreset(m_rows[row].preset);
}

QList<PresetListModel::Row> PresetListModel::wantedRows() const
{
    QList<Row> rows;
    QHash<QString, int> seen;
    for (const TextPreset &preset : m_tab == QStringLiteral("system") ? m_system : m_mine) {
        const int before = seen[preset.id]++;
        if (m_search.isEmpty() || preset.name.contains(m_search, Qt::CaseInsensitive))
            rows.append({QStringLiteral("%1 %2").arg(before).arg(preset.id), preset,
                         m_thumbnails->numberOf(preset)});
    }
    return rows;
}

void PresetListModel::showWanted()
{
    const QList<Row> wanted = wantedRows();
    const int before = count();
    removeMissing(wanted);
    for (int at = 0; at < int(wanted.size()); ++at)
        place(wanted[at], at);
    if (count() != before)
        emit countChanged();
}

void PresetListModel::removeMissing(const QList<Row> &wanted)
{
    QSet<QString> stay;
    for (const Row &row : wanted)
        stay.insert(row.identity);
    for (int at = count() - 1; at >= 0; --at) {
        if (stay.contains(m_rows[at].identity))
            continue;
        beginRemoveRows({}, at, at);
        m_rows.removeAt(at);
        endRemoveRows();
    }
}

void PresetListModel::place(const Row &row, int at)
{
    const auto known = std::find_if(m_rows.begin() + at, m_rows.end(),
                                    [&](const Row &each) { return each.identity == row.identity; });
    if (known == m_rows.end()) {
        beginInsertRows({}, at, at);
        m_rows.insert(at, row);
        endInsertRows();
        return;
    }
    const int from = int(known - m_rows.begin());
    if (from != at) {
        beginMoveRows({}, from, from, {}, at);
        m_rows.move(from, at);
        endMoveRows();
    }
    if (m_rows[at].number == row.number)
        return;
    m_rows[at] = row;
    emit dataChanged(index(at), index(at));
}

} // namespace tessara
