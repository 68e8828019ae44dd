// The answers to clashes that hosts need not write themselves.

#include <stdexcept>

#include <gmock/gmock.h>

#include <tessel/reactors.h>

#include "operations/operations.h"
#include "operations/reactor_questions.h"

namespace tessel::test {
namespace {

using ::testing::ElementsAre;
using Reactor = ProjectDb::Reactor;
using ObjectInfo = Reactor::ObjectInfo;
using Question = ReactorLog::Question;

/// Has one class answered for and keeps what is there of all others.
class AnswersFor : public KeepExisting {
public:
  AnswersFor(ObjectType type, Reactor& reactor) : type_(type), reactor_(reactor) {}

  SaveResolution onNameNotUnique(ObjectInfo& info) override {
    return info.objectType() == type_ ? reactor_.onNameNotUnique(info) : KeepExisting::onNameNotUnique(info);
  }

private:
  ObjectType type_;
  Reactor& reactor_;
};

// Every class that can clash, in a save and in a copy.

template <typename T>
class ReadyReactors : public TwoProjects {
protected:
  static constexpr ObjectType type = ObjectTraits<T>::type;

  ReadyReactors() {
    existing = db->save(makeSample<T>(1));
    incoming = changedSample();
    foreign = other->save(changedSample());
    before = row(existing->id());
  }

  /// Of the same key and other values. In a fresh file its references get the same ids each time.
  static TsSmartPtr<T> changedSample() {
    const auto sample = makeSample<T>(1);
    changeAllButTheName(*sample);
    return sample;
  }

  std::map<std::string, std::string> row(unsigned int id) const { return project.row(Sample<T>::table, id); }
  long long ownRows() const { return rows(Sample<T>::table); }

  TsSmartPtr<T> save(Reactor& answers) {
    AnswersFor asked(type, answers);
    db->setReactor(&asked);
    const auto result = db->save(incoming);
    db->setReactor(nullptr);
    return result;
  }

  IdMapping::Value copy(Reactor& answers) {
    AnswersFor asked(type, answers);
    IdMapping mapping(db);
    db->setReactor(&asked);
    db->copyAll<T>(other, mapping);
    db->setReactor(nullptr);
    IdMapping::Value value{};
    EXPECT_TRUE(mapping.get({type, foreign->id(), other.get()}, value));
    return value;
  }

  /// The values of the existing row when another object has overwritten it.
  std::map<std::string, std::string> overwrittenBy(const T& object) const {
    std::map<std::string, std::string> values = valuesOf(object);
    if (type == ObjectType::ValueDefinition) values["value_spec"] = before.at("value_spec");
    return values;
  }

  TsSmartPtr<T> existing, incoming, foreign;
  std::map<std::string, std::string> before;
};
TYPED_TEST_SUITE(ReadyReactors, ReactorClasses, ClassNames);

TYPED_TEST(ReadyReactors, ASaveKeepsWhatIsThere) {
  KeepExisting keep;
  EXPECT_EQ(this->save(keep)->id(), this->existing->id());
  EXPECT_EQ(this->row(this->existing->id()), this->before);
  EXPECT_EQ(this->ownRows(), 1);
}

TYPED_TEST(ReadyReactors, ACopyKeepsWhatIsThere) {
  KeepExisting keep;
  const IdMapping::Value copied = this->copy(keep);
  EXPECT_EQ(copied.id, this->existing->id());
  EXPECT_EQ(copied.resolution, SaveResolution::Kept);
  EXPECT_EQ(this->row(this->existing->id()), this->before);
  EXPECT_EQ(this->ownRows(), 1);
}

TYPED_TEST(ReadyReactors, ASaveOverwritesWhatIsThere) {
  OverwriteExisting overwrite;
  EXPECT_EQ(this->save(overwrite)->id(), this->existing->id());
  EXPECT_EQ(this->row(this->existing->id()), this->overwrittenBy(*this->foreign));
  EXPECT_EQ(this->ownRows(), 1);
}

TYPED_TEST(ReadyReactors, ACopyOverwritesWhatIsThere) {
  OverwriteExisting overwrite;
  const IdMapping::Value copied = this->copy(overwrite);
  EXPECT_EQ(copied.id, this->existing->id());
  EXPECT_EQ(copied.resolution, SaveResolution::Overwritten);
  EXPECT_EQ(this->row(this->existing->id()), this->overwrittenBy(*this->foreign));
  EXPECT_EQ(this->ownRows(), 1);
}

TYPED_TEST(ReadyReactors, TheLogHasTheQuestionAndTheAnswer) {
  OverwriteExisting overwrite;
  ReactorLog log(&overwrite);
  const OdString name = this->incoming->name();
  this->save(log);
  EXPECT_THAT(log.questions(), ElementsAre(Question{this->type, name, SaveResolution::Overwritten, {}}));
}

TYPED_TEST(ReadyReactors, ByDefaultTheLogLeavesTheClashToFail) {
  ReactorLog log;
  EXPECT_THROW(this->save(log), ObjectNotUnique);
  EXPECT_THAT(log.questions(), ElementsAre(Question{this->type, this->incoming->name(), {}, {}}));
  EXPECT_EQ(this->row(this->existing->id()), this->before);
}

template <typename T>
class RenamingReactors : public ReadyReactors<T> {
protected:
  /// Puts another object of the same owner under the name.
  void take(const OdString& name) {
    const auto object = this->existing->cloneObject();
    object->set_name(name);
    if constexpr (std::is_same_v<T, PropertySet>) object->clear_label();
    this->db->save(object);
  }
};
TYPED_TEST_SUITE(RenamingReactors, RenamableReactorClasses, ClassNames);

TYPED_TEST(RenamingReactors, ASaveGivesAFreeName) {
  RenameIncoming rename;
  const OdString name = this->existing->name();
  const auto result = this->save(rename);
  EXPECT_NE(result->id(), this->existing->id());
  EXPECT_EQ(result->name(), name + L" (2)");
  EXPECT_EQ(this->row(this->existing->id()), this->before);
}

TYPED_TEST(RenamingReactors, ACopyGivesAFreeNameAndLeavesTheSourceAlone) {
  RenameIncoming rename;
  ReactorLog log(&rename);
  const OdString name = this->existing->name();
  const IdMapping::Value copied = this->copy(log);
  EXPECT_EQ(copied.resolution, SaveResolution::Created);
  EXPECT_EQ(this->row(copied.id)["name"], (name + L" (2)").toUtf8());
  EXPECT_EQ(this->otherProject.row(Sample<TypeParam>::table, this->foreign->id())["name"], name.toUtf8());
  EXPECT_THAT(log.questions(), ElementsAre(Question{this->type, name, SaveResolution::Renamed, name + L" (2)"}));
}

TYPED_TEST(RenamingReactors, TakenNumbersAreLeftOut) {
  const OdString name = this->existing->name();
  this->take(name + L" (2)");
  this->take(name + L" (3)");
  this->take(name + L" (5)");
  RenameIncoming rename;
  EXPECT_EQ(this->save(rename)->name(), name + L" (4)");
}

// Names.

class RenameNames : public ReactingProject {
protected:
  /// What a second site of the name is called.
  OdString second(const OdString& name, Reactor& answers) {
    db->save(Site::create(name));
    db->setReactor(&answers);
    const auto site = db->save(Site::create(name));
    db->setReactor(nullptr);
    return site->name();
  }
  OdString second(const OdString& name, const OdString& pattern) {
    RenameIncoming rename(pattern);
    return second(name, rename);
  }
};

TEST_F(RenameNames, FollowThePattern) {
  EXPECT_EQ(second(L"Hill", L"{name}-{number}"), L"Hill-2");
  EXPECT_EQ(second(L"Vale", L"{number}. {name}, {name}"), L"2. Vale, Vale");
  EXPECT_EQ(second(L"Shore", L"{number}{number}"), L"22");
  EXPECT_EQ(second(L"Lake", L"{{name}{Number}{number}}"), L"{Lake{Number}2}");
}

TEST_F(RenameNames, AreNotReadAsPatternsThemselves) {
  EXPECT_EQ(second(L"{number}{name}", L"{name} {number}"), L"{number}{name} 2");
}

TEST_F(RenameNames, BeginWithTheWholeNameThatWasTaken) {
  RenameIncoming rename;
  EXPECT_EQ(second(L"Hill (2)", rename), L"Hill (2) (2)");
  EXPECT_EQ(second(L"\u4E2D\U0001F3E0", rename), L"\u4E2D\U0001F3E0 (2)");
  EXPECT_EQ(second(L"", rename), L" (2)");
}

TEST_F(RenameNames, CountPastNine) {
  RenameIncoming rename;
  db->save(Site::create(L"Hill"));
  db->setReactor(&rename);
  OdString last;
  for (int i = 0; i < 11; ++i) last = db->save(Site::create(L"Hill"))->name();
  EXPECT_EQ(last, L"Hill (12)");
}

TEST_F(RenameNames, AreLookedForWithinTheOwner) {
  const auto hill = db->save(Site::create(L"Hill"));
  const auto vale = db->save(Site::create(L"Vale"));
  db->save(Building::create(hill, L"House"));
  db->save(Building::create(vale, L"House (2)"));
  RenameIncoming rename;
  db->setReactor(&rename);
  EXPECT_EQ(db->save(Building::create(hill, L"House"))->name(), L"House (2)");
}

TEST_F(RenameNames, NeedANumber) {
  EXPECT_THROW(RenameIncoming(L"{name} again"), std::invalid_argument);
  EXPECT_THROW(RenameIncoming(L"{Number}"), std::invalid_argument);
  EXPECT_THROW(RenameIncoming(L""), std::invalid_argument);
}

}  // namespace
}  // namespace tessel::test
