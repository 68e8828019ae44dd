#pragma once

#include <memory>
#include <typeinfo>
#include <utility>

#include <odb/prepared-query.hxx>
#include <odb/sqlite/connection.hxx>
#include <odb/sqlite/query.hxx>
#include <odb/sqlite/transaction.hxx>

namespace tessel {

/// The query for the rows that match a key, prepared once per connection and kept there: preparing it anew would be three
/// quarters of a look-up. `matches` makes the condition from a key that it refers to; `Row` is the class to load or a
/// view. The connection knows its queries by name, which is that of the pair of types: each condition on a class needs a
/// type of key of its own.
template <typename Row, typename Key, typename Matches>
odb::prepared_query<Row> preparedQuery(const Key& key, Matches&& matches) {
  const char* const name = typeid(std::pair<Row*, Key*>).name();
  odb::sqlite::connection& connection = odb::sqlite::transaction::current().connection();
  Key* parameter = nullptr;
  odb::prepared_query<Row> query = connection.lookup_query<Row>(name, parameter);
  if (query) {
    *parameter = key;
    return query;
  }
  auto owned = std::make_unique<Key>(key);
  query = connection.prepare_query<Row>(name, odb::query<Row>(matches(*owned)));
  connection.cache_query(query, std::move(owned));
  return query;
}

}  // namespace tessel
