#include "ui/player_details.h"

#include <QFile>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <map>

#include "report/class_tables.h"
#include "stats/provenance.h"
#include "ui/gui_host.h"

namespace vantor {

namespace {

constexpr int kCountKindRole = Qt::UserRole;

// The text of a report fragment without its markup.
QString WithoutTags(std::string_view html) {
  QString text;
  bool in_tag = false;
  for (const char c : html) {
    if (c == '<')
      in_tag = true;
    else if (c == '>')
      in_tag = false;
    else if (!in_tag)
      text += QLatin1Char(c);
  }
  return text.trimmed();
}

// " (file, line N: text)" for the deciding line of a reason, when known.
QString Where(const RunRecord& run, const TeamReason& reason) {
  const std::optional<EventSource> line = DecidingLine(run, reason);
  return line ? QString(" (%1)").arg(DescribeLine(run, *line)) : QString();
}

// The player's most frequent victim and killer; the first of equals in the
// matrix's order.
QString Rivals(const std::vector<KillCount>& matrix, const std::string& name) {
  const KillCount* victim = nullptr;
  const KillCount* killer = nullptr;
  for (const KillCount& cell : matrix) {
    if (cell.killer == name && (!victim || cell.kills > victim->kills)) victim = &cell;
    if (cell.victim == name && (!killer || cell.kills > killer->kills)) killer = &cell;
  }
  const auto most = [](const KillCount* cell, const std::string& who) {
    return cell ? QString("%1 (%2)").arg(FromLogBytes(who)).arg(cell->kills) : QString("nobody");
  };
  return QString("Killed most: %1. Killed most by: %2.")
      .arg(most(victim, victim ? victim->victim : ""), most(killer, killer ? killer->killer : ""));
}

// "a kill of Alpha" or "a death by Alpha": the player's side of a fight.
QString Fight(const TeamReason& r) {
  return QString(r.as_killer ? "a kill of %1" : "a death by %1").arg(FromLogBytes(r.other));
}

}  // namespace

QString DescribeLine(const RunRecord& run, const EventSource& source) {
  const std::size_t file = source.place.file;
  const QString path =
      file < run.files.size() ? QFile::decodeName(QByteArray::fromStdString(run.files[file])) : QString();
  return QString("%1, line %2: %3")
      .arg(QFileInfo(path).fileName())
      .arg(static_cast<qulonglong>(source.place.line))
      .arg(FromLogBytes(run.Text(source.text)));
}

QString ExplainTeam(const RunRecord& run, const TeamReason& r) {
  const QString team = FromLogBytes(r.team);
  switch (r.kind) {
    case TeamReason::Kind::kFlagEvent:
      return QString("Plays for %1: their %2 was for %1%3.")
          .arg(team, FromLogBytes(r.flag_kind), Where(run, r));
    case TeamReason::Kind::kPropagated:
      return QString("Plays for %1: their first fight was %2, who plays for %3%4.")
          .arg(team, Fight(r), team == "Blue" ? "Red" : "Blue", Where(run, r));
    case TeamReason::Kind::kNoDecidingEvent:
      return "No team: they never killed or were killed by another player.";
    case TeamReason::Kind::kOpponentWithoutTeam:
      return QString("No team: their first fight was %1, whose team was not known yet%2.")
          .arg(Fight(r), Where(run, r));
    case TeamReason::Kind::kOnlySuicides:
      return "No team: they only killed themselves.";
  }
  return {};
}

PlayerDetails::PlayerDetails(std::shared_ptr<const RunRecord> run, std::size_t slot, QWidget* parent)
    : QWidget(parent, Qt::Window), run_(std::move(run)), slot_(slot) {
  setObjectName("PlayerDetails");
  setAttribute(Qt::WA_DeleteOnClose);
  const std::string& name = run_->members[slot_].strPlayerName;
  setWindowTitle(
      QString("%1 (%2) - Vantor Log Analyzer").arg(FromLogBytes(name), FromLogBytes(run_->TeamOf(slot_))));
  const std::vector<KillCount> matrix = KillMatrix(*run_);
  player_ = new QLabel(
      QString("<b>%1</b> (%2)").arg(FromLogBytes(name).toHtmlEscaped(), FromLogBytes(run_->TeamOf(slot_))));
  player_->setObjectName("player");
  team_ = new QLabel(slot_ < run_->slot_reasons.size() ? ExplainTeam(*run_, run_->slot_reasons[slot_]) : "");
  team_->setObjectName("team");
  team_->setWordWrap(true);
  team_->setTextFormat(Qt::PlainText);  // names are the log's, whatever they hold
  rivals_ = new QLabel(Rivals(matrix, name));
  rivals_->setObjectName("rivals");
  rivals_->setTextFormat(Qt::PlainText);
  CreateCountsTable();
  CreateKillsTable();
  lines_ = new QListWidget;
  lines_->setObjectName("sourceLines");
  LayOut();
  FillCounts();
  FillKillMatrix(matrix);
  connect(counts_, &QTableWidget::itemSelectionChanged, this, &PlayerDetails::ShowLinesOfSelectedCount);
  resize(900, 640);
}

void PlayerDetails::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape || event->matches(QKeySequence::Close)) return void(close());
  QWidget::keyPressEvent(event);
}

void PlayerDetails::CreateCountsTable() {
  counts_ = new QTableWidget(0, 2);
  counts_->setObjectName("counts");
  counts_->setHorizontalHeaderLabels({"Count", "Value"});
  counts_->verticalHeader()->hide();
  counts_->setSelectionBehavior(QAbstractItemView::SelectRows);
  counts_->setSelectionMode(QAbstractItemView::SingleSelection);
  counts_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  counts_->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
  counts_->verticalHeader()->setDefaultSectionSize(counts_->fontMetrics().height() + 6);
}

void PlayerDetails::CreateKillsTable() {
  kills_ = new QTableWidget(0, 3);
  kills_->setObjectName("killMatrix");
  kills_->setHorizontalHeaderLabels({"Player", "Killed by this player", "Killed this player"});
  kills_->verticalHeader()->hide();
  kills_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  kills_->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
  kills_->verticalHeader()->setDefaultSectionSize(kills_->fontMetrics().height() + 6);
}

// The counts down the left; on the right how the team was decided, the
// rivals, the kills each way and the lines of the selected count.
void PlayerDetails::LayOut() {
  auto* right = new QVBoxLayout;
  right->addWidget(player_);
  right->addWidget(team_);
  right->addWidget(rivals_);
  right->addWidget(new QLabel("Kills between this player and each other player:"));
  right->addWidget(kills_, 1);
  right->addWidget(new QLabel("Log lines behind the selected count:"));
  right->addWidget(lines_, 1);
  auto* layout = new QHBoxLayout(this);
  layout->addWidget(counts_, 2);
  layout->addLayout(right, 3);
}

void PlayerDetails::FillCounts() {
  const PlayerTally& t = run_->members[slot_];
  for (std::size_t k = 0; k < kCounts.size(); ++k) {
    AddCountRow(QString::fromLatin1(kCounts[k].label.data(), kCounts[k].label.size()), k,
                t.*kCounts[k].field);
  }
  std::vector<bool> shown(kWeaponCount, false);
  for (const ClassTable& table : kClassTables) {
    AddGroupRow(WithoutTags(table.heading));
    for (const ClassColumn& column : table.columns) {
      const CountKind kind =
          column.value.sentry_kills ? CountKind::kSentryKills : WeaponCount(column.value.weapon);
      if (!column.value.sentry_kills) shown[Index(column.value.weapon)] = true;
      AddCountRow(WithoutTags(column.header), Index(kind), column.value.Of(t));
    }
  }
  if (std::find(shown.begin(), shown.end(), false) == shown.end()) return;
  AddGroupRow("Other weapons");
  for (std::size_t w = 0; w < kWeaponCount; ++w) {
    if (shown[w]) continue;
    AddCountRow(QString::fromLatin1(kWeaponTable[w].method_name.data()),
                Index(WeaponCount(static_cast<Weapon>(w))), t.weapons[w]);
  }
}

void PlayerDetails::FillKillMatrix(const std::vector<KillCount>& matrix) {
  const std::string& name = run_->members[slot_].strPlayerName;
  std::vector<std::string> others;                       // in the matrix's order
  std::map<std::string, std::pair<Count, Count>> kills;  // other: (killed by the player, killed the player)
  for (const KillCount& cell : matrix) {
    const bool row = cell.killer == name, column = cell.victim == name;
    if (!row && !column) continue;
    const std::string& other = row ? cell.victim : cell.killer;
    if (kills.find(other) == kills.end()) others.push_back(other);
    (row ? kills[other].first : kills[other].second) += cell.kills;
  }
  for (const std::string& other : others) {
    const int r = kills_->rowCount();
    kills_->insertRow(r);
    kills_->setItem(r, 0, new QTableWidgetItem(FromLogBytes(other)));
    for (const auto& [column, value] :
         {std::pair{1, kills[other].first}, std::pair{2, kills[other].second}}) {
      auto* item = new QTableWidgetItem;
      item->setData(Qt::DisplayRole, static_cast<qlonglong>(value));  // sorted as numbers
      kills_->setItem(r, column, item);
    }
  }
  kills_->setSortingEnabled(true);
}

void PlayerDetails::AddCountRow(const QString& label, std::size_t count_kind, Count value) {
  const int row = counts_->rowCount();
  counts_->insertRow(row);
  auto* name = new QTableWidgetItem(label);
  name->setData(kCountKindRole, static_cast<qulonglong>(count_kind));
  counts_->setItem(row, 0, name);
  counts_->setItem(row, 1, new QTableWidgetItem(QString::number(value)));
}

void PlayerDetails::AddGroupRow(const QString& heading) {
  const int row = counts_->rowCount();
  counts_->insertRow(row);
  auto* item = new QTableWidgetItem(heading);
  QFont bold = item->font();
  bold.setBold(true);
  item->setFont(bold);
  item->setFlags(Qt::ItemIsEnabled);
  counts_->setItem(row, 0, item);
  counts_->setSpan(row, 0, 1, 2);
}

void PlayerDetails::ShowLinesOfSelectedCount() {
  lines_->clear();
  const QList<QTableWidgetItem*> selected = counts_->selectedItems();
  if (selected.isEmpty()) return;
  const QVariant kind = counts_->item(selected.first()->row(), 0)->data(kCountKindRole);
  if (!kind.isValid()) return;
  for (const EventSource& line : LinesOf(*run_, slot_, CountKindAt(kind.toULongLong()))) {
    lines_->addItem(DescribeLine(*run_, line));
  }
}

}  // namespace vantor
