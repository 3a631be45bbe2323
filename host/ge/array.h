// AcArray: the host's growing array over a std::vector. Indices out of range throw std::out_of_range from the
// changing operations and are the caller's fault in operator[] and at(), which are as fast as the vector's.
#pragma once

#include <algorithm>
#include <initializer_list>
#include <stdexcept>
#include <utility>
#include <vector>

#include "host/ge/point3d.h"

template <class T> class AcArray {
public:
    using value_type = T;
    using iterator = typename std::vector<T>::iterator;
    using const_iterator = typename std::vector<T>::const_iterator;

    explicit AcArray(int physicalLength = 0, int growLength = 8) : grow_(std::max(growLength, 1)) {
        items_.reserve(static_cast<size_t>(std::max(physicalLength, 0)));
    }
    AcArray(std::initializer_list<T> items) : items_(items) {}
    explicit AcArray(std::vector<T> items) : items_(std::move(items)) {}

    int length() const { return static_cast<int>(items_.size()); }
    int logicalLength() const { return length(); }
    int physicalLength() const { return static_cast<int>(items_.capacity()); }
    int growLength() const { return grow_; }
    bool isEmpty() const { return items_.empty(); }
    AcArray& setLogicalLength(int n) {
        items_.resize(static_cast<size_t>(std::max(n, 0)));
        return *this;
    }
    // A length below the logical one cuts the array short.
    AcArray& setPhysicalLength(int n) {
        const size_t size = static_cast<size_t>(std::max(n, 0));
        if (size < items_.size()) items_.resize(size);
        items_.reserve(size);
        items_.shrink_to_fit();
        items_.reserve(size);
        return *this;
    }
    AcArray& setGrowLength(int n) {
        grow_ = std::max(n, 1);
        return *this;
    }

    T& operator[](int i) { return items_[static_cast<size_t>(i)]; }
    const T& operator[](int i) const { return items_[static_cast<size_t>(i)]; }
    T& at(int i) { return items_[static_cast<size_t>(i)]; }
    const T& at(int i) const { return items_[static_cast<size_t>(i)]; }
    const T& getAt(int i) const { return at(i); }
    AcArray& setAt(int i, const T& value) {
        check(i, length());
        at(i) = value;
        return *this;
    }
    AcArray& setAll(const T& value) {
        std::fill(items_.begin(), items_.end(), value);
        return *this;
    }
    T& first() { return items_.front(); }
    const T& first() const { return items_.front(); }
    T& last() { return items_.back(); }
    const T& last() const { return items_.back(); }
    T* asArrayPtr() { return items_.data(); }
    const T* asArrayPtr() const { return items_.data(); }
    std::vector<T>& items() { return items_; }
    const std::vector<T>& items() const { return items_; }

    // The index of the new item.
    int append(const T& value) {
        items_.push_back(value);
        return length() - 1;
    }
    int append(T&& value) {
        items_.push_back(std::move(value));
        return length() - 1;
    }
    AcArray& append(const AcArray& other) {
        const size_t n = other.items_.size(); // other may be this array
        items_.reserve(items_.size() + n);
        for (size_t i = 0; i < n; ++i) items_.push_back(other.items_[i]);
        return *this;
    }
    AcArray& insertAt(int i, const T& value) {
        check(i, length() + 1);
        items_.insert(items_.begin() + i, value);
        return *this;
    }
    AcArray& removeAt(int i) {
        check(i, length());
        items_.erase(items_.begin() + i);
        return *this;
    }
    // The first equal item at or after start; false when there is none.
    bool remove(const T& value, int start = 0) {
        const int i = find(value, start);
        if (i >= 0) removeAt(i);
        return i >= 0;
    }
    AcArray& removeFirst() { return isEmpty() ? *this : removeAt(0); }
    AcArray& removeLast() { return isEmpty() ? *this : removeAt(length() - 1); }
    AcArray& removeAll() {
        items_.clear();
        return *this;
    }
    // Both ends belong to what is removed.
    AcArray& removeSubArray(int start, int end) {
        check(start, length());
        check(end, length());
        if (end >= start) items_.erase(items_.begin() + start, items_.begin() + end + 1);
        return *this;
    }

    bool contains(const T& value, int start = 0) const { return find(value, start) >= 0; }
    // -1 when there is none.
    int find(const T& value, int start = 0) const {
        for (int i = std::max(start, 0); i < length(); ++i)
            if (at(i) == value) return i;
        return -1;
    }
    bool find(const T& value, int& foundAt, int start) const {
        const int i = find(value, start);
        if (i >= 0) foundAt = i;
        return i >= 0;
    }
    AcArray& reverse() {
        std::reverse(items_.begin(), items_.end());
        return *this;
    }
    AcArray& swap(int i, int j) {
        check(i, length());
        check(j, length());
        std::swap(at(i), at(j));
        return *this;
    }
    bool operator==(const AcArray& other) const { return items_ == other.items_; }

    iterator begin() { return items_.begin(); }
    iterator end() { return items_.end(); }
    const_iterator begin() const { return items_.begin(); }
    const_iterator end() const { return items_.end(); }

private:
    static void check(int i, int bound) {
        if (i < 0 || i >= bound) throw std::out_of_range("AcArray: index out of range");
    }

    std::vector<T> items_;
    int grow_ = 8;
};

using AcGePoint2dArray = AcArray<AcGePoint2d>;
using AcGePoint3dArray = AcArray<AcGePoint3d>;
using AcGeVector2dArray = AcArray<AcGeVector2d>;
using AcGeVector3dArray = AcArray<AcGeVector3d>;
using AcGeDoubleArray = AcArray<double>;
using AcGeIntArray = AcArray<int>;
