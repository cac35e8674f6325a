#include "cli/progress_bar.h"

#include <algorithm>

namespace vantor {

namespace {
constexpr int kWidth = 30;
constexpr int kReadingShare = 800;  // of 1000
}  // namespace

void ProgressBar::SetStage(std::string stage) {
  stage_ = std::move(stage);
  percent_drawn_ = -1;
  Draw();
}

void ProgressBar::SetRead(std::uint64_t read, std::uint64_t total) {
  if (total > 0) Advance(static_cast<int>(std::min<std::uint64_t>(read, total) * kReadingShare / total));
}

void ProgressBar::SetAnalysed(std::int64_t value, std::int64_t maximum) {
  if (maximum <= 0) return;
  const std::int64_t share = std::clamp<std::int64_t>(value, 0, maximum) * (1000 - kReadingShare) / maximum;
  Advance(kReadingShare + static_cast<int>(share));
}

void ProgressBar::Advance(int permille) {
  permille_ = std::max(permille_, permille);  // never back
  Draw();
}

void ProgressBar::Draw() {
  const int percent = permille_ / 10;
  // A terminal line per percent at most; a plain line per tenth.
  const bool same =
      plain_ ? percent_drawn_ >= 0 && percent / 10 == percent_drawn_ / 10 : percent == percent_drawn_;
  if (!enabled_ || same) return;
  percent_drawn_ = percent;
  if (plain_) {
    out_ << "vantor-cli: " << percent << "% " << stage_ << "\n" << std::flush;
    return;
  }
  const int filled = percent * kWidth / 100;
  out_ << "\r\033[Kvantor-cli: [" << std::string(static_cast<std::size_t>(filled), '#')
       << std::string(static_cast<std::size_t>(kWidth - filled), '.') << "] " << percent << "% " << stage_
       << std::flush;
  drawn_ = true;
}

void ProgressBar::Clear() {
  if (enabled_ && drawn_) out_ << "\r\033[K" << std::flush;
  drawn_ = false;
}

}  // namespace vantor
