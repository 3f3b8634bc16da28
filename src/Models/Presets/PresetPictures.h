// The pictures of presets, decoded beside the main thread and kept.
#pragma once

#include <QCache>
#include <QThreadPool>

#include "Models/Picture.h"
#include "Models/Presets/PresetImageEntry.h"

#include <atomic>
#include <future>
#include <memory>

namespace tessara {

enum class PresetPicturesError { tooLarge };

inline QString text(PresetPicturesError error)
{
    switch (error) {
    case PresetPicturesError::tooLarge:
        return QStringLiteral("The pictures of this preset are too large to be shown.");
    }
    Q_UNREACHABLE();
}

/// What a preset's picture takes once decoded, its smaller levels included, as the first bytes of
/// its file tell; 0 when it will not be decoded.
qint64 decodedBytes(const PresetImageEntry &entry);

/// A picture is decoded once for its content, and the latest used stay up to a number of bytes. The
/// main thread alone asks; it shares the decoding with the other cores and waits for none that has
/// not begun.
class PresetPictures
{
public:
    static constexpr qsizetype standardCapacity = 512LL << 20; // bytes, decoded
    /// Of one preset. The largest picture that a document takes fits, so that what was saved can be
    /// applied; so do 36 that fill a canvas of 3840 by 2160 each.
    static constexpr qint64 mostForOnePreset = 1536LL << 20; // bytes, decoded
    /// Of what is decoded before anybody has asked for it: a picture of 50 million pixels fits, as
    /// large cameras take.
    static constexpr qint64 mostAhead = standardCapacity / 2; // bytes, decoded

    explicit PresetPictures(qsizetype capacity = standardCapacity);
    /// Waits for what has begun.
    ~PresetPictures();

    /// False when they are more than a preset may have; nothing is decoded to know that.
    static bool areWithinBounds(const QList<PresetImageEntry> &entries);

    /// In the order of the entries; a null picture for one that can't be decoded.
    tl::expected<QList<Picture>, PresetPicturesError>
    pictures(const QList<PresetImageEntry> &entries);
    /// Decodes ahead and out of the way, so that `pictures` finds them ready: as many as half of
    /// the room holds.
    void prefetch(const QList<PresetImageEntry> &entries);

    /// What the pictures that are kept take, those in work included.
    qint64 keptBytes() const;

private:
    /// The text of a picture's file. Texts of many megabytes are told apart by samples first.
    struct Key
    {
        QString base64;

        bool operator==(const Key &other) const;
    };
    friend size_t qHash(const Key &key, size_t seed);

    /// One decoding, done by whoever comes first.
    class Job
    {
    public:
        explicit Job(const PresetImageEntry &entry)
            : m_entry(entry)
        {
        }
        /// Nothing if somebody else has begun.
        void runIfFree();
        Picture wait() const { return m_result.get(); }

    private:
        PresetImageEntry m_entry;
        std::atomic<bool> m_hasBegun = false;
        std::promise<Picture> m_promise;
        std::shared_future<Picture> m_result = m_promise.get_future().share();
    };

    enum class Haste { now, ahead };

    std::shared_ptr<Job> job(const PresetImageEntry &entry, Haste haste);

    QCache<Key, std::shared_ptr<Job>> m_jobs; // by kilobytes
    QThreadPool m_workers;
};

} // namespace tessara
