// The application's settings: whole values by key.
#pragma once

#include <QJsonObject>
#include <QString>

#include <tl/expected.hpp>

#include <optional>

namespace tessara {

/// One JSON file that only its user may read. A write replaces the file in one step, so that a
/// crash leaves the old settings or the new ones. A file that can't be read is put aside under a
/// name of its own, and nothing is ever written over it.
class Settings
{
public:
    static constexpr qint64 largestFile = 256LL << 20; // bytes; a larger one counts as unreadable

    explicit Settings(const QString &file);

    QString file() const { return m_file; }
    /// What became of a file that couldn't be read: a sentence for the operator.
    const std::optional<QString> &loadError() const { return m_loadError; }
    bool contains(const QString &key) const { return m_values.contains(key); }
    /// Undefined for a key that was never set.
    QJsonValue value(const QString &key) const { return m_values.value(key); }

    /// An error says why the file could not be written; the settings are then as before.
    [[nodiscard]] tl::expected<void, QString> setValue(const QString &key, const QJsonValue &value);
    [[nodiscard]] tl::expected<void, QString> remove(const QString &key);

private:
    void load();
    bool putAside();
    tl::expected<void, QString> store(const QJsonObject &values);

    QString m_file;
    QJsonObject m_values;
    std::optional<QString> m_loadError;
    bool m_isInTheWay = false; // an unreadable file that could not be put aside yet
};

} // namespace tessara
