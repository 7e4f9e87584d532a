-- A library as version 1 left it: two tracks and a hidden one.
BEGIN TRANSACTION;
CREATE TABLE collection (
    id INTEGER PRIMARY KEY, pid INTEGER NOT NULL UNIQUE, kind INTEGER NOT NULL,
    name TEXT NOT NULL, sort_name TEXT NOT NULL DEFAULT '', folded TEXT NOT NULL,
    owner_id INTEGER NOT NULL DEFAULT 0,
    sort_key BLOB NOT NULL, owner_key BLOB NOT NULL DEFAULT x'',
    UNIQUE (kind, folded, owner_id));
INSERT INTO "collection" VALUES(1,1001,2,'Ann','','ann',0,X'000101416E6E',X'');
INSERT INTO "collection" VALUES(2,1002,3,'Ann','','ann',0,X'000101416E6E',X'');
INSERT INTO "collection" VALUES(3,1003,1,'Sun','','sun',2,X'00010153756E',X'');
INSERT INTO "collection" VALUES(4,1004,5,'Jazz','','jazz',0,X'0001014A617A7A',X'');
CREATE TABLE collection_count (
    collection_id INTEGER NOT NULL, media_type INTEGER NOT NULL, tracks INTEGER NOT NULL,
    PRIMARY KEY (collection_id, media_type)) WITHOUT ROWID;
INSERT INTO "collection_count" VALUES(1,1,2);
INSERT INTO "collection_count" VALUES(2,1,2);
INSERT INTO "collection_count" VALUES(3,1,2);
INSERT INTO "collection_count" VALUES(4,1,2);
CREATE TABLE folder (
    id INTEGER PRIMARY KEY, path TEXT NOT NULL UNIQUE,
    picture TEXT NOT NULL DEFAULT '', picture_stamp INTEGER NOT NULL DEFAULT 0);
INSERT INTO "folder" VALUES(1,'/music/Ann/Sun','',0);
CREATE TABLE meta (key TEXT PRIMARY KEY, value TEXT NOT NULL) WITHOUT ROWID;
INSERT INTO "meta" VALUES('sort keys','older rules');
CREATE TABLE playlist (
    id INTEGER PRIMARY KEY, pid INTEGER NOT NULL UNIQUE, name TEXT NOT NULL, sort_key BLOB NOT NULL,
    parent_id INTEGER REFERENCES playlist (id) ON DELETE CASCADE,
    is_folder INTEGER NOT NULL DEFAULT 0, is_hidden INTEGER NOT NULL DEFAULT 0, is_brivo_mix INTEGER NOT NULL DEFAULT 0,
    is_active_brivo INTEGER NOT NULL DEFAULT 0, is_deletable INTEGER NOT NULL DEFAULT 1,
    path TEXT UNIQUE, size INTEGER NOT NULL DEFAULT 0, mtime INTEGER NOT NULL DEFAULT 0,
    present INTEGER NOT NULL DEFAULT 1);
CREATE TABLE playlist_item (
    playlist_id INTEGER NOT NULL REFERENCES playlist (id) ON DELETE CASCADE, position INTEGER NOT NULL,
    track_id INTEGER NOT NULL REFERENCES track (id) ON DELETE CASCADE,
    PRIMARY KEY (playlist_id, position)) WITHOUT ROWID;
CREATE TABLE section_count (
    ordering INTEGER NOT NULL, media_type INTEGER NOT NULL, section BLOB NOT NULL, tracks INTEGER NOT NULL,
    PRIMARY KEY (ordering, section, media_type)) WITHOUT ROWID;
INSERT INTO "section_count" VALUES(0,1,X'0001',2);
INSERT INTO "section_count" VALUES(1,1,X'0001',2);
INSERT INTO "section_count" VALUES(2,1,X'0001',2);
INSERT INTO "section_count" VALUES(3,1,X'0001',2);
CREATE TABLE section_title (section BLOB PRIMARY KEY, script INTEGER NOT NULL, title TEXT NOT NULL) WITHOUT ROWID;
CREATE TABLE track (
    id INTEGER PRIMARY KEY, pid INTEGER NOT NULL UNIQUE,
    folder_id INTEGER NOT NULL REFERENCES folder (id), file_name TEXT NOT NULL,
    size INTEGER NOT NULL, mtime INTEGER NOT NULL, present INTEGER NOT NULL DEFAULT 1,
    title TEXT NOT NULL, sort_title TEXT NOT NULL,
    artist_id INTEGER NOT NULL REFERENCES collection (id), album_id INTEGER NOT NULL REFERENCES collection (id),
    album_artist_id INTEGER NOT NULL REFERENCES collection (id), genre_id INTEGER NOT NULL REFERENCES collection (id),
    composer_id INTEGER REFERENCES collection (id), podcast_id INTEGER REFERENCES collection (id),
    title_key BLOB NOT NULL, artist_key BLOB NOT NULL, album_artist_key BLOB NOT NULL, album_key BLOB NOT NULL,
    media_type INTEGER NOT NULL, is_explicit INTEGER NOT NULL, is_compilation INTEGER NOT NULL,
    track_number INTEGER NOT NULL, track_count INTEGER NOT NULL, disc_number INTEGER NOT NULL,
    duration REAL NOT NULL, release_date INTEGER, year INTEGER NOT NULL, picture INTEGER NOT NULL,
    date_added INTEGER NOT NULL, last_played INTEGER, play_count INTEGER NOT NULL DEFAULT 0, bookmark REAL,
    UNIQUE (folder_id, file_name));
INSERT INTO "track" VALUES(1,2001,1,'One.mp3',1000,1,1,'One','',1,3,2,4,NULL,NULL,X'0001014F6E65',X'000101416E6E',X'000101416E6E',X'00010153756E',1,0,0,1,3,1,60.0,NULL,1999,0,1,NULL,7,NULL);
INSERT INTO "track" VALUES(2,2002,1,'Two, hidden.mp3',1000,1,0,'Two, hidden','',1,3,2,4,NULL,NULL,X'00010154776F2C2068696464656E',X'000101416E6E',X'000101416E6E',X'00010153756E',1,0,0,2,3,1,60.0,NULL,1999,0,1,NULL,0,NULL);
INSERT INTO "track" VALUES(3,2003,1,'Three.mp3',1000,1,1,'Three','',1,3,2,4,NULL,NULL,X'0001015468726565',X'000101416E6E',X'000101416E6E',X'00010153756E',1,0,0,3,3,1,60.0,NULL,1999,0,1,NULL,0,NULL);
CREATE INDEX collection_by_name ON collection (kind, sort_key, owner_key, id);
CREATE INDEX collection_by_owner ON collection (kind, owner_key, sort_key, id);
CREATE INDEX track_by_title ON track (title_key, id, media_type, present) WHERE present = 1;
CREATE INDEX track_by_artist
    ON track (artist_key, album_key, album_id, disc_number, track_number, id, media_type, present) WHERE present = 1;
CREATE INDEX track_by_album_artist
    ON track (album_artist_key, album_key, album_id, disc_number, track_number, id, media_type, present) WHERE present = 1;
CREATE INDEX track_by_album
    ON track (album_key, album_id, disc_number, track_number, id, media_type, present) WHERE present = 1;
CREATE INDEX track_of_album
    ON track (album_id, disc_number, track_number, id, media_type, artist_id, present) WHERE present = 1;
CREATE INDEX track_of_artist
    ON track (artist_id, album_id, disc_number, track_number, id, media_type, present) WHERE present = 1;
CREATE INDEX track_of_album_artist
    ON track (album_artist_id, album_id, disc_number, track_number, id, media_type, present) WHERE present = 1;
CREATE INDEX track_of_genre ON track (genre_id, artist_id, album_id, id, media_type, present) WHERE present = 1;
CREATE INDEX track_of_composer ON track (composer_id, album_id, id, media_type, present)
    WHERE present = 1 AND composer_id IS NOT NULL;
CREATE INDEX track_of_podcast
    ON track (podcast_id, id, media_type, present) WHERE present = 1 AND podcast_id IS NOT NULL;
CREATE INDEX track_of_compilation ON track (album_id, disc_number, track_number, id, media_type, present)
    WHERE present = 1 AND is_compilation = 1;
CREATE INDEX track_with_picture ON track (picture) WHERE present = 1 AND picture <> 0;
CREATE INDEX track_by_file ON track (file_name, size, mtime);
CREATE INDEX playlist_of_parent ON playlist (parent_id);
CREATE INDEX playlist_of_track ON playlist_item (track_id);
CREATE TRIGGER track_added AFTER INSERT ON track WHEN NEW.present = 1 BEGIN INSERT INTO section_count VALUES (0, NEW.media_type, substr(NEW.title_key, 1, 2), 1) ON CONFLICT DO UPDATE SET tracks = tracks + 1;INSERT INTO section_count VALUES (1, NEW.media_type, substr(NEW.artist_key, 1, 2), 1) ON CONFLICT DO UPDATE SET tracks = tracks + 1;INSERT INTO section_count VALUES (2, NEW.media_type, substr(NEW.album_artist_key, 1, 2), 1) ON CONFLICT DO UPDATE SET tracks = tracks + 1;INSERT INTO section_count VALUES (3, NEW.media_type, substr(NEW.album_key, 1, 2), 1) ON CONFLICT DO UPDATE SET tracks = tracks + 1;INSERT INTO collection_count SELECT NEW.artist_id, NEW.media_type, 1 WHERE NEW.artist_id IS NOT NULL ON CONFLICT DO UPDATE SET tracks = tracks + 1;INSERT INTO collection_count SELECT NEW.album_id, NEW.media_type, 1 WHERE NEW.album_id IS NOT NULL ON CONFLICT DO UPDATE SET tracks = tracks + 1;INSERT INTO collection_count SELECT NEW.album_artist_id, NEW.media_type, 1 WHERE NEW.album_artist_id IS NOT NULL ON CONFLICT DO UPDATE SET tracks = tracks + 1;INSERT INTO collection_count SELECT NEW.genre_id, NEW.media_type, 1 WHERE NEW.genre_id IS NOT NULL ON CONFLICT DO UPDATE SET tracks = tracks + 1;INSERT INTO collection_count SELECT NEW.composer_id, NEW.media_type, 1 WHERE NEW.composer_id IS NOT NULL ON CONFLICT DO UPDATE SET tracks = tracks + 1;INSERT INTO collection_count SELECT NEW.podcast_id, NEW.media_type, 1 WHERE NEW.podcast_id IS NOT NULL ON CONFLICT DO UPDATE SET tracks = tracks + 1; END;
CREATE TRIGGER track_removed AFTER DELETE ON track WHEN OLD.present = 1 BEGIN UPDATE section_count SET tracks = tracks - 1 WHERE ordering = 0 AND media_type = OLD.media_type AND section = substr(OLD.title_key, 1, 2);UPDATE section_count SET tracks = tracks - 1 WHERE ordering = 1 AND media_type = OLD.media_type AND section = substr(OLD.artist_key, 1, 2);UPDATE section_count SET tracks = tracks - 1 WHERE ordering = 2 AND media_type = OLD.media_type AND section = substr(OLD.album_artist_key, 1, 2);UPDATE section_count SET tracks = tracks - 1 WHERE ordering = 3 AND media_type = OLD.media_type AND section = substr(OLD.album_key, 1, 2);UPDATE collection_count SET tracks = tracks - 1 WHERE collection_id = OLD.artist_id AND media_type = OLD.media_type;UPDATE collection_count SET tracks = tracks - 1 WHERE collection_id = OLD.album_id AND media_type = OLD.media_type;UPDATE collection_count SET tracks = tracks - 1 WHERE collection_id = OLD.album_artist_id AND media_type = OLD.media_type;UPDATE collection_count SET tracks = tracks - 1 WHERE collection_id = OLD.genre_id AND media_type = OLD.media_type;UPDATE collection_count SET tracks = tracks - 1 WHERE collection_id = OLD.composer_id AND media_type = OLD.media_type;UPDATE collection_count SET tracks = tracks - 1 WHERE collection_id = OLD.podcast_id AND media_type = OLD.media_type; END;
CREATE TRIGGER track_changed_from AFTER UPDATE OF present, media_type, title_key, artist_key, album_artist_key, album_key, artist_id, album_id, album_artist_id, genre_id, composer_id, podcast_id ON track WHEN OLD.present = 1 BEGIN UPDATE section_count SET tracks = tracks - 1 WHERE ordering = 0 AND media_type = OLD.media_type AND section = substr(OLD.title_key, 1, 2);UPDATE section_count SET tracks = tracks - 1 WHERE ordering = 1 AND media_type = OLD.media_type AND section = substr(OLD.artist_key, 1, 2);UPDATE section_count SET tracks = tracks - 1 WHERE ordering = 2 AND media_type = OLD.media_type AND section = substr(OLD.album_artist_key, 1, 2);UPDATE section_count SET tracks = tracks - 1 WHERE ordering = 3 AND media_type = OLD.media_type AND section = substr(OLD.album_key, 1, 2);UPDATE collection_count SET tracks = tracks - 1 WHERE collection_id = OLD.artist_id AND media_type = OLD.media_type;UPDATE collection_count SET tracks = tracks - 1 WHERE collection_id = OLD.album_id AND media_type = OLD.media_type;UPDATE collection_count SET tracks = tracks - 1 WHERE collection_id = OLD.album_artist_id AND media_type = OLD.media_type;UPDATE collection_count SET tracks = tracks - 1 WHERE collection_id = OLD.genre_id AND media_type = OLD.media_type;UPDATE collection_count SET tracks = tracks - 1 WHERE collection_id = OLD.composer_id AND media_type = OLD.media_type;UPDATE collection_count SET tracks = tracks - 1 WHERE collection_id = OLD.podcast_id AND media_type = OLD.media_type; END;
CREATE TRIGGER track_changed_to AFTER UPDATE OF present, media_type, title_key, artist_key, album_artist_key, album_key, artist_id, album_id, album_artist_id, genre_id, composer_id, podcast_id ON track WHEN NEW.present = 1 BEGIN INSERT INTO section_count VALUES (0, NEW.media_type, substr(NEW.title_key, 1, 2), 1) ON CONFLICT DO UPDATE SET tracks = tracks + 1;INSERT INTO section_count VALUES (1, NEW.media_type, substr(NEW.artist_key, 1, 2), 1) ON CONFLICT DO UPDATE SET tracks = tracks + 1;INSERT INTO section_count VALUES (2, NEW.media_type, substr(NEW.album_artist_key, 1, 2), 1) ON CONFLICT DO UPDATE SET tracks = tracks + 1;INSERT INTO section_count VALUES (3, NEW.media_type, substr(NEW.album_key, 1, 2), 1) ON CONFLICT DO UPDATE SET tracks = tracks + 1;INSERT INTO collection_count SELECT NEW.artist_id, NEW.media_type, 1 WHERE NEW.artist_id IS NOT NULL ON CONFLICT DO UPDATE SET tracks = tracks + 1;INSERT INTO collection_count SELECT NEW.album_id, NEW.media_type, 1 WHERE NEW.album_id IS NOT NULL ON CONFLICT DO UPDATE SET tracks = tracks + 1;INSERT INTO collection_count SELECT NEW.album_artist_id, NEW.media_type, 1 WHERE NEW.album_artist_id IS NOT NULL ON CONFLICT DO UPDATE SET tracks = tracks + 1;INSERT INTO collection_count SELECT NEW.genre_id, NEW.media_type, 1 WHERE NEW.genre_id IS NOT NULL ON CONFLICT DO UPDATE SET tracks = tracks + 1;INSERT INTO collection_count SELECT NEW.composer_id, NEW.media_type, 1 WHERE NEW.composer_id IS NOT NULL ON CONFLICT DO UPDATE SET tracks = tracks + 1;INSERT INTO collection_count SELECT NEW.podcast_id, NEW.media_type, 1 WHERE NEW.podcast_id IS NOT NULL ON CONFLICT DO UPDATE SET tracks = tracks + 1; END;
COMMIT;
PRAGMA user_version = 1;
