// The presets to choose from.
#pragma once

#include <QAbstractListModel>
#include <QtQml/qqmlregistration.h>

#include "UI/presets/PresetThumbnails.h"

#include <memory>

namespace tessara {

class AppState;

/// The presets of one tab whose names hold the searched text. Rows are inserted, moved and removed,
/// never made anew. Nothing is read before the first refresh; from then on the list follows.
class PresetListModel : public QAbstractListModel
{
    Q_OBJECT
    QML_ANONYMOUS
    /// "mine" or "system".
    Q_PROPERTY(QString tab READ tab WRITE setTab NOTIFY tabChanged FINAL)
    Q_PROPERTY(QString search READ search WRITE setSearch NOTIFY searchChanged FINAL)
    Q_PROPERTY(int count READ count NOTIFY countChanged FINAL)
    // Of each tab, whatever is searched.
    Q_PROPERTY(int mineCount READ mineCount NOTIFY presetsChanged FINAL)
    Q_PROPERTY(int systemCount READ systemCount NOTIFY presetsChanged FINAL)

public:
    enum Role { NameRole = Qt::UserRole + 1, ThumbnailRole };

    explicit PresetListModel(AppState &app);

    const std::shared_ptr<PresetThumbnails> &thumbnails() const { return m_thumbnails; }
    QString tab() const { return m_tab; }
    void setTab(const QString &tab);
    QString search() const { return m_search; }
    void setSearch(const QString &search);
    int count() const { return int(m_rows.size()); }
    int mineCount() const { return int(m_mine.size()); }
    int systemCount() const { return int(m_system.size()); }

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    Q_INVOKABLE void refresh();
    /// Makes ready what applying that row will want, so that it takes no time.
    Q_INVOKABLE void prepare(int row);
    /// Adds the layers of that row's preset to the document. No such row adds none.
    Q_INVOKABLE void apply(int row);

signals:
    void tabChanged();
    void searchChanged();
    void countChanged();
    void presetsChanged();

private:
    struct Row
    {
        QString identity; // two files may hold presets of one id
        TextPreset preset;
        int number = 0; // of the content
    };

    QList<Row> wantedRows() const;
    void showWanted();
    void removeMissing(const QList<Row> &wanted);
    void place(const Row &row, int at);

    AppState &m_app;
    std::shared_ptr<PresetThumbnails> m_thumbnails = std::make_shared<PresetThumbnails>();
    QString m_tab = QStringLiteral("mine");
    QString m_search;
    QList<TextPreset> m_mine;
    QList<TextPreset> m_system;
    QList<Row> m_rows;
    bool m_isFollowing = false;
};

} // namespace tessara
