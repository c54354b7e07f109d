#include <charconv>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <random>
#include <set>
#include <thread>

#include "support/log.h"
#include "tools/openList.h"

namespace {

void say(const std::string& line) {
  std::cout << line << std::endl;
  logInfo(line);
}

int numberIn(std::string_view text) {
  int number = 0;
  std::from_chars(text.data(), text.data() + text.size(), number);
  return number;
}

/// The test procedure tells the version in eq.dat, the description the one in eqinfo.dat.
void setVersion(TequipRec& record, int version) {
  record.setTestProc(static_cast<unsigned>(version % 500 + 1));
  record.setText(fieldDescription, 'v' + std::to_string(version));
}

/// -1 where the two files do not belong together.
int versionOf(const TequipRec& record) {
  const int version = numberIn(record.text(fieldDescription) + 1);
  return version % 500 + 1 == static_cast<int>(record.testProc()) ? version : -1;
}

/// "P-1:3 S-1:1 S-1/P:7": the versions of all records, and of what the user P made of the common record S-1.
std::string textOf(const TequipRecTable& table) {
  std::string text;
  for (TrecordIndex i = 0; i < table.count(); ++i) {
    const std::string number = table.at(i).text(fieldControlNum);
    text += ' ' + number + ':' + std::to_string(versionOf(table.at(i)));
    for (const int field : {fieldCustom1, fieldCustom2, fieldCustom3}) {
      const std::string custom = table.at(i).text(field);
      if (!custom.empty()) text.append(" ").append(number).append("/").append(custom);
    }
  }
  return text;
}

/// Works on a list as a script says, one letter a step, and prints what it does, before and after.
class TlistUser {
 public:
  TlistUser(std::filesystem::path folder, std::string name, unsigned seed)
      : folder_(std::move(folder)), name_(std::move(name)), nextNumber_(seed * 1000), random_(seed) {}

  void step(char letter) {
    switch (letter) {
      case 'l':
        return open();
      case 'r':
        return restore();
      case 's':
        return save();
      case 'a':
        return add();
      case 'c':
        return change();
      case 'd':
        return remove();
      case 'u':
        return undo();
      case 'f':
        return changeCommon();
      case 'p':
        return std::this_thread::sleep_for(std::chrono::microseconds(random_() % 3000));
      case 'w':
        return wait();
      default:
        std::abort();
    }
  }

 private:
  void open() {
    undo_.clear();
    list_.reset();
    list_ = std::make_unique<TopenList>(folder_);
    if (const QByteArray caption = list_->load(); !caption.isEmpty()) say("told " + caption.toStdString());
    say("loaded" + textOf(list_->records()));
  }
  void restore() {
    if (const TlistEdits unsaved = list_->findUnsaved(); !unsaved.empty()) list_->restore(unsaved);
    say("restored" + textOf(list_->records()));
  }
  void save() {
    say("saving");
    const std::string caption = list_->save().toStdString();
    say((list_->report.succeeded ? "saved " : "not saved ") + caption + ' ' + list_->report.details);
  }
  static void wait() {
    say("waiting");
    std::cin.get();
  }

  void add() {
    TequipRec record = makeRecord({name_ + '-' + std::to_string(nextNumber_++)});
    setVersion(record, 1);
    apply(record.text(fieldControlNum), record);
  }
  void change() {
    const auto own = recordsOf(name_);
    if (own.empty()) return;
    TequipRec record = list_->records().at(own[random_() % own.size()]);
    setVersion(record, versionOf(record) + 1);
    apply(record.text(fieldControlNum), record);
  }
  void remove() {
    const auto own = recordsOf(name_);
    if (!own.empty()) apply(list_->records().at(own[random_() % own.size()]).text(fieldControlNum), {});
  }
  void undo() {
    if (undo_.empty()) return;
    const auto [number, was] = std::move(undo_.back());
    undo_.pop_back();
    apply(number, was);
    undo_.pop_back();
  }
  void changeCommon() {
    const auto common = recordsOf("S");
    if (common.empty()) return;
    const TrecordIndex index = common[random_() % common.size()];
    const int field = fieldCustom1 + name_[0] % 3;
    const std::string start = name_ + ':';
    const std::string was = list_->records().at(index).text(field);
    const std::string version = std::to_string(was.empty() ? 1 : numberIn(was.c_str() + start.size()) + 1);
    say("doing " + std::string(list_->records().at(index).text(fieldControlNum)) + '/' + start + version);
    edit(*list_, index, [&](TequipRec& record) { record.setText(field, start + version); });
    sayDone();
  }

  /// Gives the record with this number the content `became`, or removes it.
  void apply(const std::string& number, const std::optional<TequipRec>& became) {
    say("doing " + number + ':' + std::to_string(became ? versionOf(*became) : 0));
    TrecordIndex index = 0;
    while (index < list_->records().count() && list_->records().at(index).text(fieldControlNum) != number) ++index;
    const bool isThere = index < list_->records().count();
    undo_.emplace_back(number, isThere ? std::optional(list_->records().at(index)) : std::nullopt);
    if (became && isThere) list_->change(TlistChange(TreplaceRecord{index, *became}));
    if (became && !isThere) list_->add(*became);
    if (!became && isThere) list_->change(TlistChange(TremoveRecords{{index}}));
    sayDone();
  }
  void sayDone() {
    const bool isSafe = std::getenv("EQREC_FAULT") == nullptr || list_->unsavedChanges().isSafe();
    say(isSafe ? "done" : "unsafe");
  }

  std::vector<TrecordIndex> recordsOf(const std::string& name) const {
    std::vector<TrecordIndex> found;
    for (TrecordIndex i = 0; i < list_->records().count(); ++i) {
      const TequipRec& record = list_->records().at(i);
      if (std::string_view(record.text(fieldControlNum)).starts_with(name + '-')) found.push_back(i);
    }
    return found;
  }

  std::filesystem::path folder_;
  std::string name_;
  unsigned nextNumber_;
  std::mt19937 random_;
  std::unique_ptr<TopenList> list_;
  std::vector<std::pair<std::string, std::optional<TequipRec>>> undo_;
};

}  // namespace

/// list-user FOLDER NAME SEED SCRIPT
int main(int, char** argv) {
  // Its lines are not among the operations that are to fail.
  if (std::getenv("EQREC_FAULT") == nullptr) openLog(argv[1]);
  TlistUser user(argv[1], argv[2], static_cast<unsigned>(numberIn(argv[3])));
  for (const char letter : std::string(argv[4])) user.step(letter);
}
