#include "Models/Presets/PresetPictures.h"

#include <algorithm>
#include <chrono>

namespace tessara {

namespace {

constexpr qsizetype kilobyte = 1024;

Picture decoded(const PresetImageEntry &entry)
{
    const std::optional<QByteArray> data = entry.pngData();
    return data ? Picture::fromData(*data).value_or(Picture()) : Picture();
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
    m_workers.setThreadPriority(QThread::LowPriority);
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

bool PresetPictures::Job::isReady() const
{
    return m_result.wait_for(std::chrono::seconds{0}) == std::future_status::ready;
}

std::shared_ptr<PresetPictures::Job> PresetPictures::job(const PresetImageEntry &entry)
{
    if (const auto *known = m_jobs.object({entry.pngBase64}))
        return *known;
    auto made = std::make_shared<Job>(entry);
    keep(entry, made);
    m_workers.start([made] { made->runIfFree(); });
    return made;
}

// Before it is decoded a picture counts as what its file takes.
void PresetPictures::keep(const PresetImageEntry &entry, const std::shared_ptr<Job> &job)
{
    const qsizetype bytes =
        entry.pngBase64.size() + (job->isReady() ? job->wait().sizeInBytes() : 0);
    m_jobs.insert({entry.pngBase64}, new std::shared_ptr<Job>(job), bytes / kilobyte + 1);
}

QList<Picture> PresetPictures::pictures(const QList<PresetImageEntry> &entries)
{
    std::vector<std::shared_ptr<Job>> jobs;
    for (const PresetImageEntry &entry : entries)
        jobs.push_back(job(entry));
    for (const auto &each : jobs)
        each->runIfFree();
    QList<Picture> pictures;
    for (qsizetype index = 0; index < entries.size(); ++index) {
        const auto &done = jobs[std::size_t(index)];
        pictures.append(done->wait());
        keep(entries[index], done);
    }
    return pictures;
}

void PresetPictures::prefetch(const QList<PresetImageEntry> &entries)
{
    for (const PresetImageEntry &entry : entries) {
        if (m_jobs.totalCost() >= m_jobs.maxCost() / 2)
            return;
        (void)job(entry);
    }
}

} // namespace tessara
