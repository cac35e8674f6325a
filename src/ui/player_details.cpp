#include "ui/player_details.h"

#include <QFileInfo>
#include <QHeaderView>
#include <QLabel>
#include <QListWidget>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <map>

#include "report/class_tables.h"
#include "ui/gui_host.h"
#include "stats/provenance.h"

namespace vantor {

namespace {

constexpr int kCountKindRole = Qt::UserRole;
constexpr const char* kCountLabels[] = {"Frags",        "Deaths",       "Suicides",    "Flag Grabs",
                                        "FC Defends",   "Flag Captures", "Flag Defends", "Base Defends",
                                        "FC Kills",     "Sentry Kills"};

// Names as the main window shows them.
QString FromLog(const std::string& bytes) { return FromLogBytes(bytes); }

// The text of a report fragment without its markup.
QString WithoutTags(std::string_view html) {
  QString text;
  bool in_tag = false;
  for (const char c : html) {
    if (c == '<') in_tag = true;
    else if (c == '>') in_tag = false;
    else if (!in_tag) text += QLatin1Char(c);
  }
  return text.trimmed();
}

QString Where(const RunRecord& run, const std::optional<SourceLine>& line) {
  if (!line || line->file >= run.files.size()) return {};
  return QString(" (%1, line %2)")
      .arg(QFileInfo(QString::fromLocal8Bit(run.files[line->file])).fileName())
      .arg(line->line);
}

// The player's most frequent victim and killer, from the kill matrix.
QString Rivals(const RunRecord& run, const std::string& name) {
  const std::vector<KillCount> matrix = KillMatrix(run);
  const KillCount* victim = nullptr;
  const KillCount* killer = nullptr;
  for (const KillCount& cell : matrix) {
    if (cell.killer == name && (!victim || cell.kills > victim->kills)) victim = &cell;
    if (cell.victim == name && (!killer || cell.kills > killer->kills)) killer = &cell;
  }
  const auto most = [](const KillCount* cell, const std::string& who) {
    return cell ? QString("%1 (%2)").arg(FromLog(who)).arg(cell->kills) : QString("nobody");
  };
  return QString("Killed most: %1. Killed most by: %2.")
      .arg(most(victim, victim ? victim->victim : ""), most(killer, killer ? killer->killer : ""));
}

}  // namespace

QString ExplainTeam(const RunRecord& run, const TeamReason& r) {
  const QString other = FromLog(r.other);
  switch (r.kind) {
    case TeamReason::Kind::kFlagEvent:
      return QString("%1: seeded by a %2 event%3.")
          .arg(FromLog(r.team), FromLog(r.flag_kind), Where(run, r.line));
    case TeamReason::Kind::kPropagated:
      return QString("%1: in propagation pass %2, from the first kill %3 %4 of the other team%5.")
          .arg(FromLog(r.team))
          .arg(r.pass)
          .arg(r.as_killer ? "of" : "by", other, Where(run, r.line));
    case TeamReason::Kind::kNoDecidingEvent: return "No team: no kill or death with another player.";
    case TeamReason::Kind::kOpponentWithoutTeam:
      return QString("No team: the first kill %1 %2 came before %2 had a team%3.")
          .arg(r.as_killer ? "of" : "by", other, Where(run, r.line));
    case TeamReason::Kind::kOnlySuicides: return "No team: only suicides.";
  }
  return {};
}

PlayerDetails::PlayerDetails(std::shared_ptr<const RunRecord> run, std::size_t slot, QWidget* parent)
    : QWidget(parent, Qt::Window), run_(std::move(run)), slot_(slot) {
  setObjectName("PlayerDetails");
  setAttribute(Qt::WA_DeleteOnClose);
  const std::string& name = run_->members[slot_].strPlayerName;
  setWindowTitle(QString("%1 (%2) - Vantor Log Analyzer").arg(FromLog(name), FromLog(run_->TeamOf(slot_))));
  auto* layout = new QVBoxLayout(this);
  team_ = new QLabel(slot_ < run_->slot_reasons.size() ? ExplainTeam(*run_, run_->slot_reasons[slot_]) : "");
  team_->setObjectName("team");
  team_->setTextFormat(Qt::PlainText);  // names are shown as they are, markup or not
  rivals_ = new QLabel(Rivals(*run_, name));
  rivals_->setObjectName("rivals");
  rivals_->setTextFormat(Qt::PlainText);
  counts_ = new QTableWidget(0, 2);
  counts_->setObjectName("counts");
  counts_->setHorizontalHeaderLabels({"Count", "Value"});
  counts_->verticalHeader()->hide();
  counts_->setSelectionBehavior(QAbstractItemView::SelectRows);
  counts_->setSelectionMode(QAbstractItemView::SingleSelection);
  counts_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  counts_->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
  kills_ = new QTableWidget(0, 3);
  kills_->setObjectName("killMatrix");
  kills_->setHorizontalHeaderLabels({"Player", "Killed by this player", "Killed this player"});
  kills_->verticalHeader()->hide();
  kills_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  kills_->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
  lines_ = new QListWidget;
  lines_->setObjectName("sourceLines");
  layout->addWidget(team_);
  layout->addWidget(rivals_);
  layout->addWidget(counts_);
  layout->addWidget(new QLabel("Kills between this player and each other player:"));
  layout->addWidget(kills_);
  layout->addWidget(new QLabel("Log lines behind the selected count:"));
  layout->addWidget(lines_);
  FillCounts();
  FillKillMatrix();
  connect(counts_, &QTableWidget::itemSelectionChanged, this, &PlayerDetails::ShowLinesOfSelectedCount);
  resize(460, 780);
}

void PlayerDetails::FillCounts() {
  const PlayerTally& t = run_->members[slot_];
  for (std::size_t k = 0; k < std::size(kCountLabels); ++k) AddCountRow(kCountLabels[k], k, CountOf(t, static_cast<CountKind>(k)));
  std::vector<bool> shown(kWeaponCount, false);
  for (const ClassTable& table : kClassTables) {
    AddGroupRow(WithoutTags(table.heading));
    for (const ClassColumn& column : table.columns) {
      const CountKind kind = column.value.sentry_kills ? CountKind::kSentryKills : WeaponCount(column.value.weapon);
      if (!column.value.sentry_kills) shown[Index(column.value.weapon)] = true;
      AddCountRow(WithoutTags(column.header), static_cast<std::size_t>(kind), column.value.Of(t));
    }
  }
  if (std::find(shown.begin(), shown.end(), false) == shown.end()) return;
  AddGroupRow("Other weapons");
  for (std::size_t w = 0; w < kWeaponCount; ++w) {
    if (shown[w]) continue;
    AddCountRow(QString::fromLatin1(kWeaponTable[w].method_name.data()), static_cast<std::size_t>(WeaponCount(static_cast<Weapon>(w))), t.weapons[w]);
  }
}

void PlayerDetails::FillKillMatrix() {
  const std::string& name = run_->members[slot_].strPlayerName;
  std::vector<std::string> others;  // in the matrix's order
  std::map<std::string, std::pair<Count, Count>> kills;  // other: (killed by the player, killed the player)
  for (const KillCount& cell : KillMatrix(*run_)) {
    const bool row = cell.killer == name, column = cell.victim == name;
    if (!row && !column) continue;
    const std::string& other = row ? cell.victim : cell.killer;
    if (kills.find(other) == kills.end()) others.push_back(other);
    (row ? kills[other].first : kills[other].second) += cell.kills;
  }
  for (const std::string& other : others) {
    const int r = kills_->rowCount();
    kills_->insertRow(r);
    kills_->setItem(r, 0, new QTableWidgetItem(FromLog(other)));
    kills_->setItem(r, 1, new QTableWidgetItem(QString::number(kills[other].first)));
    kills_->setItem(r, 2, new QTableWidgetItem(QString::number(kills[other].second)));
  }
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
  for (const SourceLine& at : LinesOf(*run_, slot_, static_cast<CountKind>(kind.toULongLong()))) {
    const QString file = at.file < run_->files.size() ? QString::fromLocal8Bit(run_->files[at.file]) : QString();
    lines_->addItem(QString("%1, line %2").arg(QFileInfo(file).fileName()).arg(at.line));
  }
}

}  // namespace vantor
