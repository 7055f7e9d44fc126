-- The tables of a metamodel as views over the catalogue. They show at any time what the platform has, so that nothing has
-- to be exported; upgradesrv reads views like tables. Plain SQL, for PostgreSQL and SQLite.
--
-- - The platform's numbers serve as ordinals: elements come in their order, gaps do not matter.
-- - No column may be NULL: what the platform does not say is '' or 0.
-- - Types are named as the platform's metamodel names them.

CREATE VIEW meta_classes AS
  SELECT id AS ordinal, name AS internal_name, coalesce(label, '') AS display_name, id AS class_id,
         coalesce(storage, '') AS table_name
  FROM cat_type WHERE kind = 'O';

CREATE VIEW meta_links AS
  SELECT id AS ordinal, name AS internal_name, coalesce(label, '') AS display_name, id AS class_id,
         coalesce(storage, '') AS table_name
  FROM cat_type WHERE kind = 'R';

CREATE VIEW meta_behaviors AS
  SELECT id AS ordinal, name AS internal_name, coalesce(label, '') AS display_name
  FROM cat_type WHERE kind = 'A';

CREATE VIEW meta_class_behaviors AS
  SELECT a.type_id AS class_ordinal, a.position AS ordinal, aspect.name AS behavior
  FROM cat_aspect a JOIN cat_type t ON t.id = a.type_id JOIN cat_type aspect ON aspect.id = a.aspect_id
  WHERE t.kind = 'O';

CREATE VIEW meta_link_behaviors AS
  SELECT a.type_id AS link_ordinal, a.position AS ordinal, aspect.name AS behavior
  FROM cat_aspect a JOIN cat_type t ON t.id = a.type_id JOIN cat_type aspect ON aspect.id = a.aspect_id
  WHERE t.kind = 'R';

CREATE VIEW meta_methods AS
  SELECT aspect_id AS behavior_ordinal, position AS ordinal, name AS internal_name, coalesce(label, '') AS display_name
  FROM cat_action;

-- What the three kinds of properties have in common. upgradesrv does not look at this view.
CREATE VIEW catalogue_properties AS
  SELECT t.kind, f.type_id, f.position AS ordinal, f.name AS internal_name, coalesce(f.label, '') AS display_name,
         coalesce(f.storage, '') AS field,
         CASE f.datatype WHEN 'TXT' THEN 'string' WHEN 'INT' THEN 'int32' WHEN 'DEC' THEN 'float64'
                         WHEN 'DAY' THEN 'date' WHEN 'REF' THEN 'lookup' ELSE f.datatype END AS type,
         coalesce(f.size, 0) AS length, coalesce(f.initial, '') AS default_value, coalesce(f.decimals, 0) AS precision,
         coalesce(f.highest, '') AS max, coalesce(f.lowest, '') AS min, coalesce(target.name, '') AS lookup_internal_name
  FROM cat_field f JOIN cat_type t ON t.id = f.type_id LEFT JOIN cat_type target ON target.id = f.target_id;

CREATE VIEW meta_class_properties AS
  SELECT type_id AS class_ordinal, ordinal, internal_name, display_name, field, type, length, default_value, precision, max,
         min, lookup_internal_name
  FROM catalogue_properties WHERE kind = 'O';

CREATE VIEW meta_link_properties AS
  SELECT type_id AS link_ordinal, ordinal, internal_name, display_name, field, type, length, default_value, precision, max,
         min, lookup_internal_name
  FROM catalogue_properties WHERE kind = 'R';

CREATE VIEW meta_behavior_properties AS
  SELECT type_id AS behavior_ordinal, ordinal, internal_name, display_name, field, type, length, default_value, precision,
         max, min, lookup_internal_name
  FROM catalogue_properties WHERE kind = 'A';

-- The numbers of rows guard against rows that get lost on the way; a view counts what it shows.
CREATE VIEW metamodel AS
  SELECT 2024 AS generation, 2 AS schema_version,
         (SELECT count(*) FROM meta_classes) AS meta_classes_rows,
         (SELECT count(*) FROM meta_class_behaviors) AS meta_class_behaviors_rows,
         (SELECT count(*) FROM meta_class_properties) AS meta_class_properties_rows,
         (SELECT count(*) FROM meta_links) AS meta_links_rows,
         (SELECT count(*) FROM meta_link_behaviors) AS meta_link_behaviors_rows,
         (SELECT count(*) FROM meta_link_properties) AS meta_link_properties_rows,
         (SELECT count(*) FROM meta_behaviors) AS meta_behaviors_rows,
         (SELECT count(*) FROM meta_methods) AS meta_methods_rows,
         (SELECT count(*) FROM meta_behavior_properties) AS meta_behavior_properties_rows;
