-- The catalogue of a platform whose database you may read but not write to, seen from a database of your own. For psql:
--
--     psql -v host=db.example -v port=5432 -v dbname=plm -v user=reader -v password=secret -f foreign-tables.sql
--     psql -f views.sql
--
-- The views then show the platform's catalogue, and upgradesrv reads them from your database.

CREATE EXTENSION IF NOT EXISTS postgres_fdw;
CREATE SERVER platform FOREIGN DATA WRAPPER postgres_fdw OPTIONS (host :'host', port :'port', dbname :'dbname');
CREATE USER MAPPING FOR CURRENT_USER SERVER platform OPTIONS (user :'user', password :'password');
IMPORT FOREIGN SCHEMA public LIMIT TO (cat_type, cat_aspect, cat_action, cat_field) FROM SERVER platform INTO public;
