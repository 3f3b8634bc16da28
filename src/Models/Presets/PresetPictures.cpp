#include "Models/Presets/PresetPictures.h"

#include "Base/ProcessTuning.h"

#include <QSet>
#include <QtEndian>

#include <algorithm>
#include <functional>
#include <limits>
#include <numeric>

namespace tessara {

namespace {

constexpr qsizetype kilobyte = 1024;

qint64 bytesOf(QSize size)
{
    return qint64(size.width()) * size.height() * 4 * 4 / 3;
}

Picture decoded(const PresetImageEntry &entry)
{
    const qint64 foretold = decodedBytes(entry);
    if (foretold == 0)
        return {};
    const Picture picture =
        Picture::fromData(entry.pngData().value_or(QByteArray())).value_or(Picture());
    return bytesOf(picture.size()) <= foretold ? picture : Picture();
}

// A PNG file tells its sides in its first bytes, which spares the other megabytes. Most that claim
// to be one are.
QSize sizeOf(const PresetImageEntry &entry)
{
    constexpr qsizetype widthAt = 16;
    constexpr qsizetype heightAt = 20;
    constexpr qsizetype headerLength = 24;
    const QByteArray header =
        QByteArray::fromBase64(entry.pngBase64.left(headerLength * 4 / 3).toLatin1());
    if (header.size() < headerLength || !header.startsWith("\x89PNG\r\n\x1a\n"))
        return Picture::sizeIn(entry.pngData().value_or(QByteArray()));
    const auto sideAt = [&](qsizetype place) {
        const quint32 side = qFromBigEndian<quint32>(header.constData() + place);
        return int(std::min<quint32>(side, std::numeric_limits<int>::max()));
    };
    return {sideAt(widthAt), sideAt(heightAt)};
}

} // namespace

qint64 decodedBytes(const PresetImageEntry &entry)
{
    const QSize size = sizeOf(entry);
    if (size.isEmpty() || size.width() > Picture::largestSide
        || size.height() > Picture::largestSide)
        return 0;
    return bytesOf(size);
}

namespace {

qint64 keptBytesOf(const PresetImageEntry &entry)
{
    return entry.pngBase64.size() * 2 + decodedBytes(entry);
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
    m_jobs.insert({entry.pngBase64}, new std::shared_ptr<Job>(made),
                  keptBytesOf(entry) / kilobyte + 1);
    m_workers.start([made, haste] {
        haste == Haste::ahead ? lowerThreadPriority() : resetThreadPriority();
        made->runIfFree();
    });
    return made;
}

bool PresetPictures::areWithinBounds(const QList<PresetImageEntry> &entries)
{
    QSet<Key> counted;
    qint64 bytes = 0;
    for (const PresetImageEntry &entry : entries) {
        if (counted.contains({entry.pngBase64}))
            continue;
        counted.insert({entry.pngBase64});
        bytes += decodedBytes(entry);
    }
    return bytes <= mostForOnePreset;
}

tl::expected<QList<Picture>, PresetPicturesError>
PresetPictures::pictures(const QList<PresetImageEntry> &entries)
{
    if (!areWithinBounds(entries))
        return tl::unexpected(PresetPicturesError::tooLarge);
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
    if (!areWithinBounds(entries))
        return;
    const qint64 room = std::min<qint64>(m_jobs.maxCost() / 2 * kilobyte, mostAhead);
    for (const PresetImageEntry &entry : entries) {
        if (keptBytes() + keptBytesOf(entry) <= room)
            (void)job(entry, Haste::ahead);
    }
}

qint64 PresetPictures::keptBytes() const
{
    return m_jobs.totalCost() * kilobyte;
}

} // namespace tessara
