#include <ZvUtiLib/records/Player.h>

#include <utility>

namespace {

// A charge may reduce a balance to 0 but not below. The sum uses unsigned arithmetic, so overflow wraps.
template <class Balance>
int AddTo(Balance& balance, std::int64_t amount) {
  const std::int64_t held = balance;
  if (amount < 0 && (held < 0 || amount < -held)) return 0;
  balance = static_cast<Balance>(static_cast<std::uint64_t>(held) + static_cast<std::uint64_t>(amount));
  return 1;
}

}  // namespace

void PlayerRecord::Reset() {
  PlayerRecord fresh;
  fresh.Status = Status;
  fresh.Text1.swap(Text1);
  fresh.Text2.swap(Text2);
  fresh.Attributes.swap(Attributes);
  *this = std::move(fresh);
}

bool PlayerRecord::IsFemale() const { return IsAccountKind(AccountKindFemale) || Sex == SexFemale; }

int PlayerRecord::AddToPurse(std::int64_t amount, int kind) {
  switch (kind) {
    case PurseKind1:
      return AddTo(Purse1, amount);
    case PurseKind2:
      return AddTo(Purse2, amount);
    case PurseKind4:
      return AddTo(Purse4, amount);
    case PurseKind8:
      return AddTo(Purse8, amount);
    default:
      return 0;
  }
}

std::int64_t PlayerRecord::GetPurse(int kind) const {
  switch (kind) {
    case PurseKind1:
      return Purse1;
    case PurseKind2:
      return Purse2;
    case PurseKind4:
      return Purse4;
    case PurseKind8:
      return Purse8;
    default:
      return 0;
  }
}

bool PlayerRecord::HasAttribute(int key) const { return Attributes.find(key) != Attributes.end(); }

int PlayerRecord::GetAttribute(int key) const {
  const auto found = Attributes.find(key);
  return found == Attributes.end() ? 0 : found->second;
}

std::string GetAccountLabel(int kind, int isMember) {
  switch (kind) {
    case AccountKindSupreme:
      return "\xD6\xC1\xD7\xF0\xBA\xC5";  // 至尊号
    case AccountKindFemale:
      return "\xC3\xC0\xC5\xAE\xBA\xC5";  // 美女号
    case AccountKindService:
      return "\xD4\xC6\xC7\xC5\xBF\xCD\xB7\xFE";  // 云桥客服
    default:
      break;
  }
  return isMember != 0 ? "\xBB\xE1\xD4\xB1"                   // 会员
                       : "\xC6\xD5\xCD\xA8\xCD\xE6\xBC\xD2";  // 普通玩家
}
