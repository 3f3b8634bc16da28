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

/// A picture is decoded once for its content, and the latest used stay up to a number of bytes. The
/// main thread alone asks; it shares the decoding with the other cores and waits for none that has
/// not begun.
class PresetPictures
{
public:
    static constexpr qsizetype standardCapacity = 512LL << 20; // bytes, decoded

    explicit PresetPictures(qsizetype capacity = standardCapacity);
    /// Waits for what has begun.
    ~PresetPictures();

    /// In the order of the entries; a null picture for one that can't be decoded.
    QList<Picture> pictures(const QList<PresetImageEntry> &entries);
    /// Decodes ahead and out of the way, so that `pictures` finds them ready: as many as half of
    /// the room holds.
    void prefetch(const QList<PresetImageEntry> &entries);

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
