-- The catalogue of an invented platform: what the tables of yours are called, and what is in them, is for you to find out.
-- Plain SQL, for PostgreSQL and SQLite.

CREATE TABLE cat_type (
  id INTEGER PRIMARY KEY,
  kind TEXT NOT NULL,           -- O: object, R: relation, A: aspect that objects and relations can have
  name TEXT NOT NULL,
  label TEXT,
  storage TEXT                  -- the table of its rows
);
CREATE TABLE cat_aspect (       -- the aspects of a type
  type_id INTEGER NOT NULL,
  position INTEGER NOT NULL,
  aspect_id INTEGER NOT NULL,
  PRIMARY KEY (type_id, position)
);
CREATE TABLE cat_action (       -- what can be done with an aspect
  aspect_id INTEGER NOT NULL,
  position INTEGER NOT NULL,
  name TEXT NOT NULL,
  label TEXT,
  PRIMARY KEY (aspect_id, position)
);
CREATE TABLE cat_field (
  type_id INTEGER NOT NULL,
  position INTEGER NOT NULL,
  name TEXT NOT NULL,
  label TEXT,
  storage TEXT,                 -- the column of its values
  datatype TEXT NOT NULL,       -- TXT, INT, DEC, DAY, REF
  size INTEGER,
  decimals INTEGER,
  initial TEXT,
  highest TEXT,
  lowest TEXT,
  target_id INTEGER,            -- of a REF: the type that is referred to
  PRIMARY KEY (type_id, position)
);

INSERT INTO cat_type VALUES (10, 'O', 'Pump', 'Pump', 'obj_pump');
INSERT INTO cat_type VALUES (11, 'O', 'Supplier', NULL, 'obj_supplier');
INSERT INTO cat_type VALUES (20, 'R', 'Delivers', 'delivers', 'rel_delivers');
INSERT INTO cat_type VALUES (30, 'A', 'Approvable', 'can be approved', NULL);

INSERT INTO cat_aspect VALUES (10, 1, 30);

INSERT INTO cat_action VALUES (30, 1, 'Approve', 'Approve');
INSERT INTO cat_action VALUES (30, 2, 'Reject', NULL);

INSERT INTO cat_field VALUES (10, 1, 'Number', 'Pump number', 'c_number', 'TXT', 32, NULL, NULL, NULL, NULL, NULL);
INSERT INTO cat_field VALUES (10, 2, 'Head', 'Head in m', 'c_head', 'DEC', 8, 2, '0', '500', '0', NULL);
INSERT INTO cat_field VALUES (10, 3, 'Supplier', NULL, 'c_supplier', 'REF', NULL, NULL, NULL, NULL, NULL, 11);
INSERT INTO cat_field VALUES (11, 1, 'Name', 'Name', 'c_name', 'TXT', 120, NULL, NULL, NULL, NULL, NULL);
INSERT INTO cat_field VALUES (20, 1, 'Since', 'Delivers since', 'c_since', 'DAY', NULL, NULL, NULL, NULL, NULL, NULL);
INSERT INTO cat_field VALUES (30, 1, 'ApprovedBy', 'Approved by', 'c_approved_by', 'TXT', 40, NULL, NULL, NULL, NULL, NULL);
