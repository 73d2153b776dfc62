#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "automation/variant.h"
#include "core/property.h"

namespace mirelo {

// The fields that a record may carry. The number of each is its id on the wire (streaming/level1_fields.h),
// its name the property that shows it. Date_Time also brings DateQT and TimeQT; Tick and UPC are read and
// dropped.
enum class QuoteField : std::uint8_t {
  Symbol = 1,
  Bid_Price,
  Ask_Price,
  Last_Price,
  Change,
  Volume,
  OpenTicker,
  Prev_Close,
  Bid_Size,
  Ask_Size,
  Last_Size,
  High,
  Low,
  Tick,
  Date_Time,
  Week_52_High,
  Week_52_Low,
  Company_Name,
  Prev_Volume,
  Trades,
  Avg_Trade_Size,
  Average_Volume,
  Dividend,
  Earnings,
  Exchange,
  Market_Cap,
  PE,
  Open_Interest,
  UPC,
  Yield,
  CloseTicker,
};

// Which fields a record carried.
class CarriedFields {
 public:
  static constexpr std::size_t kMost = 64;  // ids, from 0 on

  bool Has(QuoteField field) const { return (bits_ >> static_cast<unsigned>(field) & 1) != 0; }
  // Takes the field with this id down, if it `came`. Ids below kMost; 0 is that of no field.
  void Note(std::size_t id, bool came = true) { bits_ |= static_cast<std::uint64_t>(came) << id; }

 private:
  std::uint64_t bits_ = 0;
};

// One quote as the stream delivers it. It holds exactly what one record carried: what the record lacked is 0
// or empty here, not the value last seen; Carries tells the two apart. Volumes are the low 32 bits of what
// was sent; WholeVolumes has all of it.
//
// Properties stand in the order of the public interface. Getting and letting them cannot fail, so the failure
// "cQTData component failure" of this class has no way to occur.
class cQTData : public Object {
 public:
  std::string_view TypeName() const override { return "cQTData"; }

  // How far Volume rose since the ticker's last quote with one and with the same Date_Time; 0 for the first.
  Property<std::int32_t> Last_Volume;
  Property<std::string> TimeQT;  // time of arrival, displaced to the shown zone
  Property<std::string> DateQT;  // date of arrival, displaced, in the user's format
  Property<std::string> NameID;  // the collection key given at creation
  Property<std::string> Tick;    // tick direction
  Property<std::string> UPC;
  Property<double> CloseTicker;
  Property<double> Yield;
  Property<std::int32_t> Open_Interest;
  Property<double> PE;  // price to earnings
  Property<std::string> Market_Cap;
  Property<std::string> Exchange;
  Property<double> Earnings;
  Property<double> Dividend;
  Property<std::int32_t> Average_Volume;
  Property<std::int32_t> Avg_Trade_Size;
  Property<std::int32_t> Trades;  // number of trades
  Property<std::int32_t> Prev_Volume;
  Property<std::string> Company_Name;
  Property<double> Week_52_Low;
  Property<double> Week_52_High;
  Property<std::string> Date_Time;  // the server's stamp in the user's format
  Property<double> Low;             // of the day
  Property<double> High;            // of the day
  Property<std::int32_t> Last_Size;
  Property<std::int32_t> Ask_Size;
  Property<std::int32_t> Bid_Size;
  Property<double> Prev_Close;
  Property<double> OpenTicker;
  Property<std::int32_t> Volume;  // since the day began
  Property<double> Change;
  Property<double> Last_Price;
  Property<double> Ask_Price;
  Property<double> Bid_Price;
  Property<std::string> Symbol;

  // Whether the record had the field, be it with a 0 or an empty text; the properties cannot tell these from
  // what was lacking.
  bool Carries(QuoteField field) const { return carried_.Has(field); }
  void Carry(CarriedFields fields) { carried_ = fields; }

  // Volume and Last_Volume as they are where more is traded than the properties have room for.
  struct Whole {
    std::int64_t volume = 0;
    std::int64_t last_volume = 0;
  };
  const Whole& WholeVolumes() const { return whole_; }
  void WholeVolumes(const Whole& volumes) { whole_ = volumes; }

 private:
  CarriedFields carried_;
  Whole whole_;
};

}  // namespace mirelo
