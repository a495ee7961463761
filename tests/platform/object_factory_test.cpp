#include <new>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/object_factory.h"

namespace {

/// Writes its number into a list when it is deleted.
class Numbered : public TElement {
public:
    Numbered(std::vector<int>& deletedNumbers, int ownNumber) : deleted(deletedNumbers), number(ownNumber) {}
    ~Numbered() override { deleted.push_back(number); }

private:
    std::vector<int>& deleted;
    int number;
};

class Factory : public TObjFac {
public:
    using TObjFac::Register;
    using TObjFac::Scan;

    TObjEl* TObjFacCreateEl(void* object) override {
        if (object == nullptr)
            return nullptr;
        lastElement = new TObjEl(object);
        return lastElement;
    }

    TObjEl* lastElement = nullptr;
};

class FactoryWithoutMemory : public Factory {
public:
    TObjEl* TObjFacCreateEl(void*) override { throw std::bad_alloc(); }
};

TEST(objectFactory, newList_isEmpty) {
    const TList list;
    EXPECT_EQ(list.GetFirst(), nullptr);
}

TEST(objectFactory, list_keepsTheOrderOfItsElements) {
    std::vector<int> deleted;
    TList list;
    TElement* const one = new Numbered(deleted, 1);
    TElement* const two = new Numbered(deleted, 2);
    TElement* const three = new Numbered(deleted, 3);
    list.Append(one);
    list.Append(two);
    list.Append(three);
    EXPECT_EQ(list.GetFirst(), one);
    EXPECT_EQ(one->GetNext(), two);
    EXPECT_EQ(two->GetNext(), three);
    EXPECT_EQ(three->GetNext(), nullptr);
}

TEST(objectFactory, list_ignoresNull) {
    std::vector<int> deleted;
    TList list;
    list.Append(nullptr);
    EXPECT_EQ(list.GetFirst(), nullptr);
    TElement* const one = new Numbered(deleted, 1);
    list.Append(one);
    list.Append(nullptr);
    EXPECT_EQ(list.GetFirst(), one);
    EXPECT_EQ(one->GetNext(), nullptr);
}

TEST(objectFactory, list_deletesItsElementsFromTheFirstOn) {
    std::vector<int> deleted;
    {
        TList list;
        for (int number = 1; number <= 3; ++number)
            list.Append(new Numbered(deleted, number));
        EXPECT_TRUE(deleted.empty());
    }
    EXPECT_THAT(deleted, testing::ElementsAre(1, 2, 3));
}

// A recursive destruction would need some tens of megabytes of stack.
TEST(objectFactory, longList_isDeletedWithoutRecursion) {
    TList list;
    for (int i = 0; i < 1000000; ++i)
        list.Append(new TElement);
    EXPECT_NE(list.GetFirst(), nullptr);
}

TEST(objectFactory, newElement_standsForItsObjectAndHasNoUser) {
    int object = 0;
    const TObjEl element(&object);
    EXPECT_EQ(element.GetObject(), &object);
    EXPECT_EQ(element.GetReferences(), 0u);
    EXPECT_EQ(element.GetNext(), nullptr);
}

TEST(objectFactory, element_countsItsUsers) {
    TObjEl element(nullptr);
    element.AddReference();
    element.AddReference();
    EXPECT_EQ(element.GetReferences(), 2u);
}

TEST(objectFactory, registration_countsTheElementAndItsFirstReference) {
    Factory factory;
    int object = 0;
    EXPECT_EQ(factory.GetNrElements(), 0);
    EXPECT_EQ(factory.Register(&object), &object);
    EXPECT_EQ(factory.GetNrElements(), 1);
    EXPECT_EQ(factory.lastElement->GetReferences(), 1u);
}

TEST(objectFactory, objectRegisteredTwice_hasTwoElements) {
    Factory factory;
    int object = 0;
    factory.Register(&object);
    factory.Register(&object);
    EXPECT_EQ(factory.GetNrElements(), 2);
    EXPECT_EQ(factory.Scan(1), &object);
    EXPECT_EQ(factory.Scan(0), &object);
    EXPECT_EQ(factory.Scan(0), nullptr);
}

TEST(objectFactory, withoutAnElement_nothingIsRegistered) {
    Factory factory;
    EXPECT_EQ(factory.Register(nullptr), nullptr);
    EXPECT_EQ(factory.GetNrElements(), 0);
    EXPECT_EQ(factory.Scan(1), nullptr);
}

TEST(objectFactory, exceptionOfTheElementCreation_registersNothing) {
    FactoryWithoutMemory factory;
    int object = 0;
    EXPECT_NO_THROW(EXPECT_EQ(factory.Register(&object), nullptr));
    EXPECT_EQ(factory.GetNrElements(), 0);
}

TEST(objectFactory, emptyFactory_hasNothingToScan) {
    Factory factory;
    EXPECT_EQ(factory.Scan(0), nullptr);
    EXPECT_EQ(factory.Scan(1), nullptr);
}

TEST(objectFactory, scan_goesThroughTheObjectsInRegistrationOrder) {
    Factory factory;
    int objects[3] = {};
    for (int& object : objects)
        factory.Register(&object);
    EXPECT_EQ(factory.Scan(1), &objects[0]);
    EXPECT_EQ(factory.Scan(0), &objects[1]);
    EXPECT_EQ(factory.Scan(0), &objects[2]);
    EXPECT_EQ(factory.Scan(0), nullptr);
}

TEST(objectFactory, firstScan_startsAtTheFirstObjectEvenWithoutARestart) {
    Factory factory;
    int objects[2] = {};
    for (int& object : objects)
        factory.Register(&object);
    EXPECT_EQ(factory.Scan(0), &objects[0]);
    EXPECT_EQ(factory.Scan(0), &objects[1]);
}

TEST(objectFactory, scan_staysAtTheEndUntilItIsRestarted) {
    Factory factory;
    int objects[2] = {};
    for (int& object : objects)
        factory.Register(&object);
    while (factory.Scan(0) != nullptr) {
    }
    EXPECT_EQ(factory.Scan(0), nullptr);
    EXPECT_EQ(factory.Scan(0), nullptr);
    EXPECT_EQ(factory.Scan(-1), &objects[0]);
    EXPECT_EQ(factory.Scan(0), &objects[1]);
}

TEST(objectFactory, scan_restartsInTheMiddle) {
    Factory factory;
    int objects[3] = {};
    for (int& object : objects)
        factory.Register(&object);
    factory.Scan(1);
    factory.Scan(0);
    EXPECT_EQ(factory.Scan(1), &objects[0]);
    EXPECT_EQ(factory.Scan(0), &objects[1]);
}

TEST(objectFactory, objectRegisteredDuringAScan_isReached) {
    Factory factory;
    int objects[2] = {};
    factory.Register(&objects[0]);
    EXPECT_EQ(factory.Scan(1), &objects[0]);
    factory.Register(&objects[1]);
    EXPECT_EQ(factory.Scan(0), &objects[1]);
    EXPECT_EQ(factory.Scan(0), nullptr);
}

} // namespace
