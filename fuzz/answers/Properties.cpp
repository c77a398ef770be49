#include "fuzz/answers/Properties.h"

#include <exception>
#include <new>

#include <ZvUtiLib/CKxTime.h>
#include <ZvUtiLib/CUtiBase.h>
#include <ZvUtiLib/CUtiNumber.h>
#include <ZvUtiLib/CUtiTurnTable.h>
#include <ZvUtiLib/GameCatalogue.h>
#include <ZvUtiLib/data/CStringDict.h>
#include <ZvUtiLib/data/CTextString.h>
#include <ZvUtiLib/data/Crc16.h>
#include <ZvUtiLib/data/ParseInt.h>
#include <ZvUtiLib/data/TimeValue.h>
#include <ZvUtiLib/platform/CString.h>

namespace answers {
namespace {

constexpr const char* kPieces[] = {
    "0",    "1",    "9",        "12345678", "-",    "+",  ",", ".",  " ",    "\t", "a", "Z", "_",
    "\x80", "\x81", "\xB7\xE3", "\x81\x5C", "\xFF", "\\", "/", "\n", "\r\n", "=",  "&", ":", "%"};

void AskNumbers(Random& random, Report& report) {
  const std::int64_t value = random.Number();
  const std::string text = random.Below(2) == 0 ? std::to_string(value) : random.Text(kPieces, 24);
  report << value << text << CUtiNumber::CheckNumber(text.c_str())
         << ParseInt(text.c_str(), random.Below(30));
  CString result;
  report << CUtiNumber::CheckNumber(value, result) << result.GetString();
  report << CUtiNumber::InsertSeparator(value, result) << result.GetString();
  for (const auto operation : {static_cast<int (*)(const char*, CString&)>(CUtiNumber::InsertSeparator),
                               CUtiNumber::RemoveSeparator, CUtiNumber::ChangeLowerNum2UpperNum}) {
    const int answer = operation(text.c_str(), result);
    report << answer << result.GetString();
  }
  report << CUtiNumber::GetNumCN(static_cast<int>(value)).GetString();
}

void AskTimes(Random& random, Report& report) {
  constexpr const char* kDates[] = {"2013-08-29 12:34:56", "2063-12-31 23:59:59", "2000-1-1", "0-0-0 0:0:0"};
  std::string text = random.Of(kDates);
  for (unsigned change = random.Below(4); change > 0; --change)
    text.replace(random.Below(static_cast<unsigned>(text.size())), random.Below(3), random.Of(kPieces));
  const auto word = static_cast<std::uint32_t>(random.Word());
  report << text << static_cast<std::uint32_t>(CKxTime::String2DWord(text.c_str())) << word;
  report << CKxTime::DWord2String(word).GetString() << CKxTime::DWord2StringNoSecond(word).GetString();
  for (const auto field : {CKxTime::GetYearFromWord, CKxTime::GetMonthFromWord, CKxTime::GetDayFromWord,
                           CKxTime::GetHourFromWord, CKxTime::GetMinuteFromWord, CKxTime::GetSecondFromWord})
    report << static_cast<std::uint32_t>(field(word));
  const CTimeSpanValue span(random.Number());
  report << span.GetTotalHours() << (CTimeValue::FromSeconds(random.Number()) + span).GetTime();
}

// Left out is what belongs to the system's C library: floating-point numbers, and the flag 0 beside a
// precision or for texts.
void AskFormats(Random& random, Report& report) {
  constexpr const char* kFlags[] = {"", "-", "0", "+", " ", "#", "-0", "+#"};
  constexpr const char* kWidths[] = {"", "1", "7", "20", ".0", ".3", "9.4"};
  constexpr const char* kWhole[] = {"d", "i", "u", "x", "X", "o", "hd", "hu", "c"};
  constexpr const char* kNumbers[] = {"d", "i", "u", "x", "X", "o", "hd", "hu"};
  constexpr const char* kWide[] = {"I64d", "I64u", "I64x", "lld", "llu"};
  const std::string width = random.Of(kWidths);
  std::string flags = random.Of(kFlags);
  if (width.find('.') != width.npos) std::erase(flags, '0');
  const std::string head = "%" + flags + width;
  const bool isZeroFilled = std::erase(flags, '0') > 0;
  const std::string text = random.Text(kPieces, 6);
  const std::int64_t value = random.Number();
  const std::string whole = "<" + head + (isZeroFilled ? random.Of(kNumbers) : random.Of(kWhole)) + ">";
  const std::string wide = "<" + head + random.Of(kWide) + ">";
  const std::string texts = text.find('%') == text.npos ? text + "%" + flags + width + "s%%" : "<%s>";
  report << whole << wide << texts << value;
  const auto print = [&](auto& out, const auto& get) {
    out.Format(whole.c_str(), static_cast<int>(value));
    report << get(out);
    out.Format(wide.c_str(), value);
    report << get(out);
    out.Format(texts.c_str(), text.c_str());
    report << get(out);
  };
  CString string;
  print(string, [](const CString& s) { return s.GetString(); });
  CTextString other;
  print(other, [](const CTextString& s) { return s.c_str(); });
}

void AskStrings(Random& random, Report& report) {
  const std::string text = random.Text(kPieces, 16), word = random.Text(kPieces, 2);
  const int at = static_cast<int>(random.Below(20));
  const CString string(text.c_str());
  CString changed(string);
  report << text << word << string.Find(word.c_str(), at) << string.Find('\\') << string.ReverseFind('\\');
  report << string.Left(at).GetString() << string.Right(at).GetString() << string.Mid(at, 3).GetString();
  report << changed.MakeUpper().GetString() << changed.MakeLower().GetString() << changed.Trim().GetString();
  const auto sign = [](int order) { return order < 0 ? -1 : order > 0; };
  report << changed.Replace('1', '\\') << sign(string.Compare(word.c_str()))
         << sign(string.CompareNoCase(changed));
  report << CUtiBase::CheckAccountValid(text.c_str()) << CUtiBase::CheckPasswdValid(text.c_str())
         << CUtiBase::IsDigit(string) << CUtiBase::IsChatValid(text.c_str());
  CTextString other(text.c_str());
  report << other.find(word.c_str()) << other.ReplaceAll(word.c_str(), "xy") << other.c_str();
  report << Crc16(0xFFFF, text.data(), static_cast<unsigned>(text.size()));
}

void AskPairs(Random& random, Report& report) {
  struct Lister {
    void List(const char* key, const char* value) { report << key << value; }
    Report& report;
  } lister{report};
  std::string text;
  for (unsigned count = random.Below(40); count > 0; --count)
    text += random.Text(kPieces, 3) + "=" + random.Text(kPieces, 3) + "&";
  report << text;
  CStringDict dict;
  dict.Parse(text.c_str(), random.Below(2) == 0 ? "=&" : ":,");
  dict.Visit(&lister, &Lister::List);
}

void AskWheel(Random& random, Report& report) {
  class Wheel : public CUtiTurnTable {
   public:
    Wheel(Random& random, Report& report) {
      TurnTable_Initial();
      curAngle = random.Below(6000) / 1000.0;
      maxSpeed = (1 + random.Below(400)) / 1000.0;
      acceleration = maxSpeed / (1 + random.Below(60));
      TurnTable_Start();
      const unsigned even = random.Below(100);
      for (unsigned tick = 0; tick < 3000 && state != TurnStateIdle; ++tick) {
        TurnTable_Update(0.01F);
        if (tick == even + 60) report << TurnTable_End(static_cast<int>(random.Below(13)));
        if (tick % 16 == 0) report << curAngle << curSpeed << state;
      }
      report << curAngle << curSpeed << deceleration << state;
    }
  };
  if (random.Below(20) == 0) Wheel(random, report);  // thousands of ticks each
}

void AskGames(Random& random, Report& report) {
  const auto id = random.Below(2) == 0 ? random.Below(200) : static_cast<GameId>(random.Number());
  report << id << GetGameCodeName(id) << GetGameDisplayName(id) << GetGameMinPlayers(id)
         << GetGameMaxPlayers(id) << IsGameFixedPlayers(id) << GetGameKind(id) << IsHallGameId(id);
}

}  // namespace

std::string Answer(const Property& property, unsigned number) {
  Random random(number * 2654435761u +
                Crc16(0, property.name, static_cast<unsigned>(std::strlen(property.name))));
  Report report;
  try {
    property.ask(random, report);
  } catch (const std::bad_alloc&) {
    throw;
  } catch (const std::exception&) {
    report << "exception";
  }
  return report.Text();
}

std::vector<Property> AllProperties() {
  return {{"numbers", AskNumbers}, {"times", AskTimes}, {"formats", AskFormats}, {"strings", AskStrings},
          {"pairs", AskPairs},     {"wheel", AskWheel}, {"games", AskGames},     {"files", AskFiles},
          {"records", AskRecords}, {"xml", AskXml}};
}

}  // namespace answers
