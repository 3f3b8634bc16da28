#include "Models/Presets/PresetPictures.h"

#include "Base/ProcessTuning.h"

#include <QtEndian>

#include <algorithm>
#include <functional>
#include <numeric>

namespace tessara {

namespace {

constexpr qsizetype kilobyte = 1024;

Picture decoded(const PresetImageEntry &entry)
{
    const std::optional<QByteArray> data = entry.pngData();
    return data ? Picture::fromData(*data).value_or(Picture()) : Picture();
}

// What the raster will take, smaller ones for drawing it small included: a picture file tells its
// sides in its first bytes.
qsizetype decodedBytes(const PresetImageEntry &entry)
{
    constexpr qsizetype widthAt = 16;
    constexpr qsizetype heightAt = 20;
    constexpr qsizetype headerLength = 24;
    const QByteArray header =
        QByteArray::fromBase64(entry.pngBase64.left(headerLength * 4 / 3).toLatin1());
    if (header.size() < headerLength)
        return 0;
    const qint64 width = qFromBigEndian<quint32>(header.constData() + widthAt);
    const qint64 height = qFromBigEndian<quint32>(header.constData() + heightAt);
    if (width > Picture::largestSide || height > Picture::largestSide)
        return 0; // it will not be decoded
    return width * height * 4 * 4 / 3;
}

} // namespace

bool PresetPictures::Key::operator==(const Key &other) const
{
    return base64.constData() == other.base64.constData() || base64 == other.base64;
}

size_t qHash(const PresetPictures::Key &key, size_t seed)
{
    constexpr qsizetype sample = 256; // characters, at both ends and in the middle
    const QStringView text(key.base64);
    const QStringView middle = text.mid(text.size() / 2, sample);
    return qHashMulti(seed, text.size(), text.left(sample), middle, text.right(sample));
}

PresetPictures::PresetPictures(qsizetype capacity)
    : m_jobs(capacity / kilobyte)
{
    m_workers.setMaxThreadCount(std::max(1, QThread::idealThreadCount() - 1));
}

PresetPictures::~PresetPictures()
{
    m_workers.clear();
    m_workers.waitForDone();
}

void PresetPictures::Job::runIfFree()
{
    if (!m_hasBegun.exchange(true))
        m_promise.set_value(decoded(m_entry));
}

std::shared_ptr<PresetPictures::Job> PresetPictures::job(const PresetImageEntry &entry, Haste haste)
{
    if (const auto *known = m_jobs.object({entry.pngBase64}))
        return *known;
    auto made = std::make_shared<Job>(entry);
    const qsizetype bytes = entry.pngBase64.size() * 2 + decodedBytes(entry);
    m_jobs.insert({entry.pngBase64}, new std::shared_ptr<Job>(made), bytes / kilobyte + 1);
    m_workers.start([made, haste] {
        haste == Haste::ahead ? lowerThreadPriority() : resetThreadPriority();
        made->runIfFree();
    });
    return made;
}

QList<Picture> PresetPictures::pictures(const QList<PresetImageEntry> &entries)
{
    std::vector<std::shared_ptr<Job>> jobs;
    for (const PresetImageEntry &entry : entries)
        jobs.push_back(job(entry, Haste::now));
    // The largest first: it is what everybody waits for in the end.
    std::vector<std::size_t> order(jobs.size());
    std::iota(order.begin(), order.end(), std::size_t(0));
    std::ranges::stable_sort(order, std::greater(), [&](std::size_t index) {
        return entries[qsizetype(index)].pngBase64.size();
    });
    for (const std::size_t index : order)
        jobs[index]->runIfFree();
    QList<Picture> pictures;
    for (const auto &each : jobs)
        pictures.append(each->wait());
    return pictures;
}

void PresetPictures::prefetch(const QList<PresetImageEntry> &entries)
{
    for (const PresetImageEntry &entry : entries) {
        if (m_jobs.totalCost() >= m_jobs.maxCost() / 2)
            return;
        (void)job(entry, Haste::ahead);
    }
}

} // namespace tessara
