#include <cstddef>
#include <cstring>
#include <functional>
#include <memory>
#include <set>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include <tessel/tessel.h>

namespace tessel::test {
namespace {

/// Notes its calls in a list that reactors can share.
class Recorder : public ObjectReactor {
public:
  using Calls = std::vector<std::pair<const ObjectReactor*, const Object*>>;

  Recorder() = default;
  explicit Recorder(Calls& shared) : shared_(&shared) {}

  void onObjectDeleted(Object* object) override {
    ++calls;
    if (shared_) shared_->emplace_back(this, object);
    if (then) then(object);
  }

  int calls = 0;
  std::function<void(Object*)> then;

private:
  Calls* shared_ = nullptr;
};

TsSmartPtr<Site> newSite() { return Site::create(L"Harbour"); }

/// Leaves garbage behind in its place, so that whoever still reaches into it comes to grief. One of a type at a time.
template <typename T>
class Mortal : public T {
public:
  template <typename... Arguments>
  explicit Mortal(Arguments&&... arguments) : T(std::forward<Arguments>(arguments)...) {}

  static void* operator new(std::size_t) { return place; }
  static void operator delete(void*) { std::memset(place, 0xDD, sizeof place); }

private:
  alignas(T) static inline unsigned char place[sizeof(T)];
};

TsSmartPtr<Site> newMortalSite() { return new Mortal<Site>(SetDirty{}); }

TEST(ObjectReactor, HearsOnceOfTheEndOfItsObject) {
  Recorder reactor;
  auto site = newSite();
  site->addReactor(&reactor);
  EXPECT_EQ(reactor.calls, 0);
  site.reset();
  EXPECT_EQ(reactor.calls, 1);
}

TEST(ObjectReactor, AddedTwiceIsToldOnce) {
  Recorder reactor;
  auto site = newSite();
  site->addReactor(&reactor);
  site->addReactor(&reactor);
  reactor.addObject(site.get());
  site.reset();
  EXPECT_EQ(reactor.calls, 1);
}

TEST(ObjectReactor, AddedTwiceIsRemovedByOneRemoval) {
  Recorder reactor;
  auto site = newSite();
  site->addReactor(&reactor);
  site->addReactor(&reactor);
  site->removeReactor(&reactor);
  site.reset();
  EXPECT_EQ(reactor.calls, 0);
}

// The link is the same whichever side makes it, so each side can undo what the other one did.
TEST(ObjectReactor, IsLinkedOnBothSidesByEitherSide) {
  using Link = std::function<void(Site&, Recorder&)>;
  const Link adds[] = {[](Site& site, Recorder& reactor) { site.addReactor(&reactor); },
                       [](Site& site, Recorder& reactor) { reactor.addObject(&site); }};
  const Link removals[] = {[](Site& site, Recorder& reactor) { site.removeReactor(&reactor); },
                           [](Site& site, Recorder& reactor) { reactor.removeObject(&site); }, [](Site&, Recorder&) {}};
  for (const Link& add : adds) {
    for (const Link& remove : removals) {
      Recorder reactor;
      auto site = newSite();
      add(*site, reactor);
      remove(*site, reactor);
      site.reset();
      EXPECT_EQ(reactor.calls, &remove == &removals[2] ? 1 : 0);
    }
  }
}

TEST(ObjectReactor, ThatNeverWatchedCanBeRemoved) {
  Recorder reactor;
  auto site = newSite();
  site->removeReactor(&reactor);
  reactor.removeObject(site.get());
  site.reset();
  EXPECT_EQ(reactor.calls, 0);
}

TEST(ObjectReactor, OfSeveralIsEachToldOnceInTheOrderOfTheirAddresses) {
  Recorder::Calls calls;
  std::vector<std::unique_ptr<Recorder>> reactors;
  for (int i = 0; i < 5; ++i) reactors.push_back(std::make_unique<Recorder>(calls));
  auto site = newSite();
  const Site* const address = site.get();
  for (auto reactor = reactors.rbegin(); reactor != reactors.rend(); ++reactor) site->addReactor(reactor->get());
  site.reset();

  std::set<const ObjectReactor*> ordered;
  for (const auto& reactor : reactors) ordered.insert(reactor.get());
  Recorder::Calls expected;
  for (const ObjectReactor* const reactor : ordered) expected.emplace_back(reactor, address);
  EXPECT_EQ(calls, expected);
}

TEST(ObjectReactor, DoesNotHoldAnObjectThatHasGone) {
  auto reactor = std::make_unique<Recorder>();
  auto gone = newSite();
  auto kept = newSite();
  gone->addReactor(reactor.get());
  kept->addReactor(reactor.get());
  gone.reset();
  EXPECT_EQ(reactor->calls, 1);
  reactor.reset();  // would reach into the object that has gone
  kept.reset();
}

TEST(ObjectReactor, ThatIsDestroyedFirstIsNotTold) {
  auto site = newSite();
  int calls = 0;
  {
    Recorder reactor;
    reactor.then = [&calls](Object*) { ++calls; };
    site->addReactor(&reactor);
  }
  site.reset();
  EXPECT_EQ(calls, 0);
}

TEST(ObjectReactor, WatchesSeveralObjects) {
  Recorder::Calls calls;
  Recorder reactor(calls);
  auto first = newSite();
  auto second = newSite();
  const Recorder::Calls expected = {{&reactor, second.get()}, {&reactor, first.get()}};
  first->addReactor(&reactor);
  second->addReactor(&reactor);
  second.reset();
  first.reset();
  EXPECT_EQ(calls, expected);
}

TEST(ObjectReactor, SeesTheObjectWhole) {
  Recorder reactor;
  OdString name;
  const OdRxClass* rxClass = nullptr;
  reactor.then = [&](Object* object) {
    name = static_cast<Site*>(object)->name();
    rxClass = object->isA();
  };
  auto site = newSite();
  site->addReactor(&reactor);
  site.reset();
  EXPECT_EQ(name, L"Harbour");
  EXPECT_EQ(rxClass, Site::desc());
}

TEST(ObjectReactor, MayTakeAReferenceForTheLengthOfTheCall) {
  Recorder first;
  Recorder second;
  OdString name;
  first.then = second.then = [&name](Object* object) { name = Site::queryX(object)->name(); };
  auto site = newSite();
  site->addReactor(&first);
  site->addReactor(&second);
  site.reset();
  EXPECT_EQ(name, L"Harbour");
  EXPECT_EQ(first.calls, 1);
  EXPECT_EQ(second.calls, 1);
}

TEST(ObjectReactor, MayRemoveOrDestroyAnotherOneDuringTheCall) {
  Recorder ordered[3];  // ascending addresses
  auto site = newSite();
  for (Recorder& reactor : ordered) site->addReactor(&reactor);
  auto destroyed = std::make_unique<Recorder>();
  int callsOfDestroyed = 0;
  destroyed->then = [&callsOfDestroyed](Object*) { ++callsOfDestroyed; };
  site->addReactor(destroyed.get());
  ordered[0].then = [&](Object* object) {
    object->removeReactor(&ordered[1]);
    destroyed.reset();
  };
  site.reset();
  EXPECT_EQ(ordered[0].calls, 1);
  EXPECT_EQ(ordered[1].calls, 0);
  EXPECT_EQ(ordered[2].calls, 1);
}

TEST(ObjectReactor, MayDestroyItselfDuringTheCall) {
  auto* const reactor = new Recorder;
  bool called = false;
  reactor->then = [&called, reactor](Object*) {
    called = true;
    delete reactor;
  };
  auto site = newSite();
  site->addReactor(reactor);
  site.reset();
  EXPECT_TRUE(called);
}

TEST(ObjectReactor, ThatIsACopyIsNotToldByTheObjectsOfTheOriginal) {
  Recorder original;
  auto site = newSite();
  site->addReactor(&original);
  Recorder copy(original);
  copy.removeObject(site.get());  // what it believes, it can forget
  Recorder another(original);
  another.removeObject(site.get());
  site.reset();
  EXPECT_EQ(original.calls, 1);
  EXPECT_EQ(copy.calls, 0);
  EXPECT_EQ(another.calls, 0);
}

TEST(ObjectReactor, ThatIsACopyIsDestroyedWithoutHarmToTheOriginal) {
  Recorder original;
  auto site = newSite();
  site->addReactor(&original);
  { const Recorder copy(original); }
  site.reset();
  EXPECT_EQ(original.calls, 1);
}

TEST(ObjectReactor, ThatIsACopyCanBeLinkedInEarnest) {
  Recorder original;
  auto site = newSite();
  site->addReactor(&original);
  Recorder copy(original);
  copy.addObject(site.get());  // nothing new to its own set, so the object does not hear of it
  site->addReactor(&copy);
  site.reset();
  EXPECT_EQ(original.calls, 1);
  EXPECT_EQ(copy.calls, 1);
}

TEST(ObjectReactor, ThatIsACopyBelievesItWatchesAlready) {
  Recorder original;
  auto site = newSite();
  site->addReactor(&original);
  Recorder copy(original);
  copy.addObject(site.get());
  site->removeReactor(&original);
  copy.removeObject(site.get());
  site.reset();
  EXPECT_EQ(original.calls, 0);
  EXPECT_EQ(copy.calls, 0);
}

TEST(ObjectReactor, AssignedToItselfKeepsItsObjects) {
  Recorder reactor;
  auto site = newSite();
  site->addReactor(&reactor);
  const Recorder& same = reactor;
  reactor = same;
  site.reset();
  EXPECT_EQ(reactor.calls, 1);
}

TEST(ObjectReactor, AssignedOneIsNotToldByTheNewObjects) {
  Recorder source;
  Recorder target;
  auto site = newSite();
  site->addReactor(&source);
  target = source;
  target.removeObject(site.get());
  site.reset();
  EXPECT_EQ(source.calls, 1);
  EXPECT_EQ(target.calls, 0);
}

// The objects still know a reactor that has forgotten them.
TEST(ObjectReactor, AssignedOneIsToldOnceByTheOldObjects) {
  Recorder target;
  auto site = newSite();
  site->addReactor(&target);
  target = Recorder();
  site.reset();
  EXPECT_EQ(target.calls, 1);
}

// What a copy believes to watch may be long gone.
TEST(ObjectReactor, ThatIsACopyMayOutliveTheObjects) {
  Recorder original;
  auto site = newMortalSite();
  Site* const gone = site.get();
  site->addReactor(&original);
  auto destroyed = std::make_unique<Recorder>(original);
  Recorder copy(original);
  site.reset();
  destroyed.reset();
  copy.removeObject(gone);
  EXPECT_EQ(original.calls, 1);
  EXPECT_EQ(copy.calls, 0);
}

TEST(ObjectReactor, AssignedOneMayOutliveTheNewObjects) {
  Recorder source;
  auto site = newMortalSite();
  Site* const gone = site.get();
  site->addReactor(&source);
  auto destroyed = std::make_unique<Recorder>();
  *destroyed = source;
  Recorder target;
  target = source;
  site.reset();
  destroyed.reset();
  target.removeObject(gone);
  EXPECT_EQ(source.calls, 1);
  EXPECT_EQ(target.calls, 0);
}

TEST(ObjectReactor, AssignedOneThatIsDestroyedFirstIsNotToldByTheOldObjects) {
  Recorder::Calls calls;
  std::unique_ptr<Recorder> target = std::make_unique<Mortal<Recorder>>(calls);
  auto site = newSite();
  site->addReactor(target.get());
  *target = Recorder(calls);
  target.reset();
  site.reset();
  EXPECT_TRUE(calls.empty());
}

TEST(ObjectReactor, StartsWithoutObjects) {
  Recorder reactor;
  auto site = newSite();
  site.reset();
  EXPECT_EQ(reactor.calls, 0);
}

}  // namespace
}  // namespace tessel::test
