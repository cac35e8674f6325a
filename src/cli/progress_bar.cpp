#include "cli/progress_bar.h"

#include <algorithm>

namespace vantor {

namespace {
constexpr int kWidth = 30;
}

void ProgressBar::SetStage(std::string stage) {
  stage_ = std::move(stage);
  Draw();
}

void ProgressBar::SetValue(std::int64_t value) {
  const int percent = static_cast<int>(std::clamp<std::int64_t>(value * 100 / maximum_, 0, 100));
  if (percent == percent_ && drawn_) return;  // a terminal line per percent at most
  percent_ = percent;
  Draw();
}

void ProgressBar::Draw() {
  if (!enabled_) return;
  const int filled = percent_ * kWidth / 100;
  out_ << "\r\033[Kvantor-cli: [" << std::string(static_cast<std::size_t>(filled), '#')
       << std::string(static_cast<std::size_t>(kWidth - filled), '.') << "] " << percent_ << "% " << stage_
       << std::flush;
  drawn_ = true;
}

void ProgressBar::Clear() {
  if (enabled_ && drawn_) out_ << "\r\033[K" << std::flush;
  drawn_ = false;
}

}  // namespace vantor
