#pragma once

namespace mirelo::day {

// Sets a flag until the end of a block, however that ends.
class Meanwhile {
 public:
  explicit Meanwhile(bool& flag) : flag_(flag) { flag_ = true; }
  ~Meanwhile() { flag_ = false; }
  Meanwhile(const Meanwhile&) = delete;
  Meanwhile& operator=(const Meanwhile&) = delete;

 private:
  bool& flag_;
};

}  // namespace mirelo::day
